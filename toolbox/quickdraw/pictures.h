// Pixels out of the screens and back. Private to the Toolbox; what hosts may
// use is in toolbox/host/picture.h.
#pragma once

#include <vector>

#include "quickdraw/surface.h"
#include "toolbox/host/picture.h"

namespace toolbox::quickdraw {

// What the screens showed of a global rectangle, each in its device pixels.
struct SavedBits {
    std::vector<Bits> parts;
    unsigned screens = 0;  // which screens they were taken of
};

SavedBits saveBits(const Rect &global);
// Puts back what saveBits took. Not clipped. False, and nothing done, when the
// screens have changed since: what lay there is to be drawn anew.
bool restoreBits(const SavedBits &bits);

}  // namespace toolbox::quickdraw
