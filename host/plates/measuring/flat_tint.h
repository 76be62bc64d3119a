// The tints of a plate, and where one is flat enough to measure a screen on.
#pragma once

#include "plates/files/plate.h"
#include "plates/measuring/place.h"

namespace riders::plates {

struct TintRange {
    bool solid = false;          // there is full ink
    bool tint = false;           // there is ink that is not full
    double least = 0, most = 0;  // of those tints, 0 to 1; tints of less than a square millimetre do not count
};
TintRange tintRange(const TintPlate &plate, double dpi);

// The best flat tint to measure a screen on: large, and not too light or dark;
// 1.5 inches a side at most, which is exact enough here, and a little away from its edges. Empty where no
// tint is as large as a tenth of an inch.
Place flatTint(const TintPlate &plate, double dpi);

}  // namespace riders::plates
