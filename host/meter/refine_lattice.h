// Making a lattice that is nearly right exact.
#pragma once

#include "meter/lattice.h"

namespace riders::meter {

// Refines a lattice that fits all of the window, a little and quickly.
Lattice roughLattice(const BitPage &page, const PageWindow &window, Lattice start);
// Refines a lattice that fits a patch of so many pixels in the middle of the
// window, until it fits all of the window.
Lattice refineLattice(const BitPage &page, const PageWindow &window, Lattice start, int patch);

}  // namespace riders::meter
