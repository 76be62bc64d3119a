// Windows that lie where no display is. Private to the Toolbox.
#pragma once

#include "toolbox/types.h"
#include "windows/window_list.h"

namespace toolbox::windows {

// The shortest way (h, v) by which the rectangle, global, gets onto the display
// that shows most of it, the main one when none shows any. What is larger than
// the display's room gets its top left there.
Point wayOntoDisplays(const Rect &frame);

// Whether one who sees the window could not put it right: it cannot be dragged
// and a part of it is cut off, or less than half of it is on the displays.
bool isLost(const Window &window, const Area &displays);

}  // namespace toolbox::windows
