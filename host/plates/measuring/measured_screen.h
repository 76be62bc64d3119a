// The screen on a plate, measured.
#pragma once

#include <string>

#include "plates/files/plate.h"
#include "plates/measuring/place.h"

namespace riders::plates {

// Below so many pixels along a cell's side all dot shapes look the same, and in tints lighter than that, or as
// near to solid ink.
inline constexpr double kTellingCell = 8, kLeastTellingInk = 0.1;

struct MeasuredScreen {
    bool found = false;
    double frequency = 0, angle = 0;  // lines per inch; degrees, 0 to below 90 for dots
    double ink = 0;                   // 0 to 1, where it was measured
    Place where;
    std::string shape = {};  // the spot function most like the dots; empty where that is not clear
    bool lines = false;      // then the angle is that in which they run, 0 to below 180
};

// Measures in the middle of a flat tint or, if that is empty or shows no screen,
// on the largest flat tint there is. `aboutFrequency` is the one expected, in lines per inch: no more of the tint
// is read than 0.1 % and 0.05 degrees need. `shape` is the one expected: it is the result when the dots are like
// it, another when they are clearly more like that one, none when cells are small or dots or gaps tiny.
MeasuredScreen measurePlate(const BitPlate &plate, double dpi, const Place &tint, double aboutFrequency,
                            const std::string &shape = {});

}  // namespace riders::plates
