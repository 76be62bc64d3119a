// Pixels out of the screens and back. Private to the Toolbox; what hosts may
// use is in toolbox/host/picture.h.
#pragma once

#include "toolbox/host/picture.h"

namespace toolbox::quickdraw {

// The pixels of a global rectangle, white where there is no screen.
Picture saveBits(const Rect &global);
// Puts back what saveBits took from a rectangle of the same size. Not clipped.
// A picture of another size is left alone.
void restoreBits(const Rect &global, const Picture &bits);

}  // namespace toolbox::quickdraw
