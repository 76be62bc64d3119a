// A restless user: somebody who presses, types, chooses and cancels at random,
// in front of a disk that fails now and then. Each step is a line of a script
// that `riders play` repeats.
#pragma once

#include <functional>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace restless {

using Lines = std::vector<std::string>;

// Where the next line comes from, with the dialog in front (0: between calls of
// the plug-in). Nothing: the walk is over.
using Source = std::function<std::optional<std::string>(int dialogID)>;

// Lines at random that can be carried out with what is in front; over after
// about so many keys and clicks.
Source walking(unsigned seed, int events, bool faults);
// The lines given; those that cannot be carried out are left out.
Source repeating(Lines lines);
// What leads out of the dialog, one step at a time.
std::string wayOut(int dialogID);

// The fewest of the lines, as far as leaving some out can tell, that still fail.
Lines shrunk(Lines lines, const std::function<bool(const Lines &)> &fails);

}  // namespace restless
