// Whether windows can be moved and closed with the mouse on Wayland. Private to the desktop machine.
#pragma once

#include <SDL.h>

#include <filesystem>

namespace toolbox::desktop {

// Some compositors, such as Weston's, leave it to programs to draw the frames of their windows. SDL leaves that to
// libdecor, and libdecor to a plugin, without which there is no frame. Says so on standard error where that is a
// terminal, with the package that has one; nothing where windows have frames, and elsewhere than on Wayland.
void sayIfWithoutFrame(SDL_Window *window);

// Whether that folder holds a plugin of libdecor.
bool hasFramePlugin(const std::filesystem::path &folder);

}  // namespace toolbox::desktop
