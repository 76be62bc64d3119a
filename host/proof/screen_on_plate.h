// The screen on a plate, measured.
#pragma once

#include "proof/facts.h"

namespace riders {

// Measures on the place, or where that is empty or shows none, on the largest even tint there is.
MeasuredScreen measurePlate(const BitPlate &plate, double dpi, const Place &even);

}  // namespace riders
