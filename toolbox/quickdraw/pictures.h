// Pixels out of the displays and back. Private to the Toolbox; what hosts may
// use is in toolbox/host/picture.h.
#pragma once

#include <vector>

#include "quickdraw/surface.h"
#include "toolbox/host/picture.h"

namespace toolbox::quickdraw {

// What the displays showed of a global rectangle, each in its device pixels.
struct SavedBits {
    std::vector<Bits> parts;
    unsigned displays = 0;  // which displays they were taken of
};

SavedBits saveBits(const Rect &global);
// Puts back what saveBits took. Not clipped. False, and nothing done, when the
// displays have changed since: what lay there is to be drawn anew.
bool restoreBits(const SavedBits &bits);

}  // namespace toolbox::quickdraw
