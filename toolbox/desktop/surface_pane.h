// Pixels through SDL's window surface. Private to the desktop machine.
#pragma once

#include "desktop/pane.h"

namespace toolbox::desktop {

std::unique_ptr<Pane> makeSurfacePane(SDL_Window *window);

}  // namespace toolbox::desktop
