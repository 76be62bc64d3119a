// Refining a nearly right lattice until it is exact.
#pragma once

#include "meter/lattice.h"

namespace riders::meter {

// Refines a lattice that fits all of the window, a little and quickly.
Lattice roughLattice(const BitPage &page, const PageWindow &window, Lattice start);
// Refines a lattice that fits a patch in the middle of the window, `patch`
// pixels a side, until it fits all of the window.
Lattice refineLattice(const BitPage &page, const PageWindow &window, Lattice start, int patch);

}  // namespace riders::meter
