// For whoever learns that the screens have changed. Private to the Toolbox.
#pragma once

#include <functional>

namespace toolbox::windows {

// Windows that the change leaves out of reach are moved onto the screens; menu
// bar, desktop and every window are painted anew, and every window gets an
// update event. Nothing before the Window Manager is started.
void screensChanged();
// The menu bar, white with its line, and what the Menu Manager has in it.
void paintMenuBar();
// Set by the Menu Manager: draws the titles into the current port, which is in
// global coordinates.
extern std::function<void()> drawMenuTitles;

}  // namespace toolbox::windows
