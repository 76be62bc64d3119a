// The part of a window that is not its content: shape, drawing, and which part
// of it a point is in. Private to the Window Manager.
#pragma once

#include "windows/window_list.h"

namespace toolbox::windows {

// Sets structure and content for a content at that global rectangle.
void shapeWindow(Window &window, const Rect &content);
bool hasTitleBar(const WindowRecord &record);
// Draws the frame into the current port, which is in global coordinates.
void drawFrame(const Window &window);
// inDrag, inGoAway or inDesk for a point of the structure, not of the content.
int16_t partOfFrame(const Window &window, Point global);

}  // namespace toolbox::windows
