// The screen on a plate, measured.
#pragma once

#include "proof/facts.h"

namespace riders::proof {

// Measures in the middle of an even tint, or where that is empty or shows none,
// on the largest even tint there is. The frequency that is expected, in lines an inch, tells how
// much of it is enough: 0.1 % and 0.05 degrees are. The shape that is expected is told where the dots are
// like it; another where they are plainly more like that; none where cells are small, dots or gaps tiny.
MeasuredScreen measurePlate(const BitPlate &plate, double dpi, const Place &tint, double aboutFrequency,
                            const std::string &shape = {});

}  // namespace riders::proof
