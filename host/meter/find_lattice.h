// The first look at a window: which waves are there.
#pragma once

#include <optional>

#include "meter/lattice.h"

namespace riders::meter {

// The lattice of the screen in the window, fitting all of it; none when the
// window has no screen. The window lies on the page.
std::optional<Lattice> findLattice(const BitPage &page, const PageWindow &window);

}  // namespace riders::meter
