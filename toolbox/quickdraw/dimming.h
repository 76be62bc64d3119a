// The look of what cannot be used now: controls, menu items, rows of a list.
// Private to the Toolbox.
#pragma once

#include "toolbox/types.h"

namespace toolbox::quickdraw {

// Every other pixel of the rectangle, local to the current port, takes the
// background colour. The pen is plain afterwards.
void dim(const Rect &r);

}  // namespace toolbox::quickdraw
