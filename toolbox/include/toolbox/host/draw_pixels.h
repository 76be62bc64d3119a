// Drawing pictures that are not resources, for hosts.
#pragma once

#include "toolbox/host/machine.h"
#include "toolbox/quickdraw.h"

namespace toolbox {

// Draws the picture in the current port, stretched to the rectangle (local), in the nearest colours that the display
// has: each device pixel takes the pixel of the picture that lies there, so one that is scale times as wide and high
// as the rectangle is drawn as it is. Clipped like everything; nothing for an empty picture. Traced as
// "pixels" with the rectangle. Between start and stop of the Toolbox; allocates nothing there.
void drawPixels(const Picture &picture, const Rect &box);

}  // namespace toolbox
