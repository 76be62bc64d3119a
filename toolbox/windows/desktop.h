// The menu bar and the desktop, on which windows lie. Private to the Toolbox.
#pragma once

#include <functional>

namespace toolbox::windows {

// To be called when the displays have changed. Windows that the change leaves out of reach are moved onto the displays; menu
// bar, desktop and every window are painted anew, and every window gets an
// update event. Nothing before the Window Manager is started.
void displaysChanged();
// The menu bar, white with its line, and what the Menu Manager has in it.
void paintMenuBar();
// Set by the Menu Manager: draws the titles into the current port, which is in
// global coordinates.
extern std::function<void()> drawMenuTitles;

}  // namespace toolbox::windows
