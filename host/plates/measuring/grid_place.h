// Where the dots of a screen lie on a plate.
#pragma once

#include <optional>

#include "plates/files/plate.h"
#include "plates/measuring/place.h"

namespace riders::plates {

// A point of the sheet, in inches from its upper left corner.
struct GridPoint {
    double x = 0, y = 0;
};

// The middle of a dot of the screen, or of a line, near the middle of that part of the plate: where the ink's two
// waves of that frequency (per inch) and angle (degrees, clockwise) have their crests. None where no ink is there.
std::optional<GridPoint> middleOfDot(const BitPlate &plate, double dpi, const Place &place, double frequency,
                                     double angle);

}  // namespace riders::plates
