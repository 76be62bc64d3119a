// Pixels on Wayland. Private to the desktop machine.
#pragma once

#include "desktop/pane.h"

namespace toolbox::desktop {

// DesktopError when the window is not on Wayland, or the compositor shares no
// memory.
std::unique_ptr<Pane> makeWaylandPane(SDL_Window *window);

}  // namespace toolbox::desktop
