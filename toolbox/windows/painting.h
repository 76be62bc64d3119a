// Which part of each window is visible, and painting what has been uncovered.
// Private to the Window Manager.
#pragma once

#include "windows/window_list.h"

namespace toolbox::windows {

// The global point at the port's local 0, 0.
Point globalOrigin(const WindowRecord &record);
// The part of the displays that no window in front of that position covers.
// Global; the menu bar belongs to no window.
Area uncovered(size_t position);
// Gives each window's port its new visible region.
void recalculateVisible();
// Paints the area, global: frames, contents white (and to be updated),
// desktop. Call it after recalculateVisible.
void paint(const Area &exposed);
// Redraws a window's frame where it is visible.
void paintFrame(const Window &window);
void setUpdate(Window &window, const Area &update);
// Menu bar and desktop, and all windows.
void paintAll();

}  // namespace toolbox::windows
