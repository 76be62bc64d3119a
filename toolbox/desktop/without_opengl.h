// Windows on Wayland without OpenGL.
#pragma once

#include <SDL.h>

namespace toolbox::desktop {

// What to add to a window's flags so that SDL loads no OpenGL for it; 0 where nothing is to be added, or can be.
// To be called once video has started, before the window is made.
Uint32 flagsWithoutOpenGl();

}  // namespace toolbox::desktop
