// Where on a page its dots show best.
#pragma once

#include <vector>

#include "plates/files/plate.h"
#include "plates/measuring/place.h"

namespace riders::plates {

// How well a tint, 0 to 255, shows its dots, 0 to 1: middle tints best; solid ink only a little, so that
// plates of text are looked at where the text is.
double telling(int ink);

// Where a square of `side` inches (less on a smaller page), and its middle, show most of the
// dots of these plates together; for plates without tints, most of their ink.
Place tellingPlace(const std::vector<const TintPlate *> &plates, double dpi, double side);
// How much of a place shows dots, 0 to 1.
Place middleOf(const Place &place);  // a quarter as wide and high
double tellingShare(const TintPlate &plate, double dpi, const Place &place);

}  // namespace riders::plates
