// Choosing the way pixels get into the window. Private to the desktop machine.
#pragma once

#include "desktop/pane.h"

namespace toolbox::desktop {

// The window must outlive its pane. DesktopError when there is no way.
std::unique_ptr<Pane> makePane(SDL_Window *window);

}  // namespace toolbox::desktop
