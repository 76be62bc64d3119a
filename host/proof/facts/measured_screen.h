// The screen on a plate, measured.
#pragma once

#include <string>

#include "plates/files/plate.h"
#include "proof/looking/place.h"

namespace riders::proof {

struct MeasuredScreen {
    bool found = false;
    double frequency = 0, angle = 0;  // lines an inch; degrees, 0 to below 90 for dots
    double ink = 0;                   // 0 to 1, where it was measured
    Place where;
    std::string shape = {};  // the spot function most like the dots; empty where that is not clear
};

// Measures in the middle of a flat tint, or where that is empty or shows none,
// on the largest flat tint there is. By the frequency that is expected, in lines an inch, no more of the tint
// is read than 0.1 % and 0.05 degrees need. `shape` is the one that is expected: it is the result where the dots
// are like it; another is where they are clearly more like that; none where cells are small, dots or gaps tiny.
MeasuredScreen measurePlate(const plates::BitPlate &plate, double dpi, const Place &tint, double aboutFrequency,
                            const std::string &shape = {});

}  // namespace riders::proof
