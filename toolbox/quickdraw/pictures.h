// Pixels copied from the displays and back. Private to the Toolbox; what hosts
// may use is in toolbox/host/picture.h.
#pragma once

#include <vector>

#include "quickdraw/surface.h"
#include "toolbox/host/picture.h"

namespace toolbox::quickdraw {

// What the displays showed of a global rectangle, each in its device pixels.
struct SavedBits {
    std::vector<Bits> parts;
    unsigned displays = 0;  // which displays they were taken from
};

SavedBits saveBits(const Rect &global);
// Puts back what saveBits took. Not clipped. False, with nothing done, when the
// displays have changed since: what was there must be redrawn.
bool restoreBits(const SavedBits &bits);

}  // namespace toolbox::quickdraw
