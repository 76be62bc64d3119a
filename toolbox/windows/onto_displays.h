// Windows that lie outside all displays. Private to the Toolbox.
#pragma once

#include "toolbox/types.h"
#include "windows/window_list.h"

namespace toolbox::windows {

// The shortest move (h, v) that brings the rectangle, global, onto the display
// that shows most of it, the main one when none shows any. If it is larger than
// the display's room, its top left goes to the room's.
Point wayOntoDisplays(const Rect &frame);

// Whether the window is out of the user's reach: it cannot be dragged and a part
// of it is cut off, or less than half of it is on the displays.
bool isLost(const Window &window, const Area &displays);

}  // namespace toolbox::windows
