// A restless user, who presses, types, chooses and cancels at random, while the disk
// fails now and then. Each step is a line of a script that `riders play` can repeat.
#pragma once

#include <functional>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace restless {

using Lines = std::vector<std::string>;

// Returns the next line, given the dialog in front (0: between calls of the plug-in);
// nothing when the walk is over.
using Source = std::function<std::optional<std::string>(int dialogID)>;

// Random lines that can be carried out with what is in front; over after about that
// many keys and clicks.
Source walking(unsigned seed, int events, bool faults);
// The given lines, without those that cannot be carried out.
Source repeating(Lines lines);
// A step that leads out of the dialog.
std::string wayOut(int dialogID);

// The fewest lines that still fail, as far as leaving some out shows.
Lines shrunk(Lines lines, const std::function<bool(const Lines &)> &fails);

}  // namespace restless
