// A spot function from its values on a grid.
#pragma once

#include <vector>

#include "screening/thresholds.h"

namespace riders::film {

// side * side values, rows from y = -1 up and values from x = -1 up, a side's last one a step before 1, where the
// next cell begins; linear between them. The function keeps its own copy.
screening::SpotFunction tabulatedSpot(const std::vector<float> &values, int side);

}  // namespace riders::film
