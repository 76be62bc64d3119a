// A set of screens: one for each plate of a job.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "screens/plate_screen.h"

namespace riders::screens {

struct SetPlate {
    PlateScreen screen;            // its frequency and shape only where they are the plate's own
    std::optional<double> factor;  // of the set's frequency
};

struct ScreenSet {
    std::string name, use, source;    // use: what it is for; source: where the figures come from
    std::optional<double> frequency;  // lines per inch, of the plates without one of their own
    std::string shape;                // the same; empty for none
    std::vector<SetPlate> plates;     // each plate once, in the order of the file
};

// The screen of each plate, with nothing left to look up in the set. With a frequency, all are scaled: it takes
// the place of the set's, and the plates' own change in the same proportion. Throws io::Refusal where the set has
// no frequency that theirs could be compared with, or where a plate gets one that is out of range.
std::vector<PlateScreen> screensOf(const ScreenSet &set, std::optional<double> frequency = {});

// Puts the parts that are given in place of those of the entry for that plate, or adds an entry.
void setPlate(std::vector<PlateScreen> &plates, const PlateScreen &given);

}  // namespace riders::screens
