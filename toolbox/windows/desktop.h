// The menu bar and the desktop, on which windows lie. Private to the Toolbox.
#pragma once

#include <functional>

namespace toolbox::windows {

// Call it when the displays have changed. Windows that the change leaves out of
// reach are moved onto the displays; menu bar, desktop and every window are
// repainted, and every window gets an update event. Does nothing before the
// Window Manager is started.
void displaysChanged();
// Paints the menu bar, white with its line, and the Menu Manager's titles.
void paintMenuBar();
// Set by the Menu Manager: draws the titles into the current port, which is in
// global coordinates.
extern std::function<void()> drawMenuTitles;

}  // namespace toolbox::windows
