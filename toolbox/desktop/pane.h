// Ways of getting pixels into the window. Private to the desktop machine.
#pragma once

#include <SDL.h>

#include <memory>

#include "toolbox/host/machine.h"

namespace toolbox::desktop {

// Shows a picture at the window's top left, and white where the window is
// larger.
struct Pane {
    virtual ~Pane() = default;
    // Outside the part, which lies in the picture, everything is as last shown.
    // False when it cannot be shown now: to be tried again later, with all that
    // has changed by then.
    virtual bool show(const Picture &picture, const SDL_Rect &part) = 0;
    // Shows all of it, whatever was shown before, at whatever size.
    virtual bool showAll(const Picture &picture) = 0;
};

// The window's size in pixels of the display, which may be smaller than SDL's
// units.
inline SDL_Point pixelsOf(SDL_Window *window)
{
    SDL_Point size;
    SDL_GetWindowSizeInPixels(window, &size.x, &size.y);
    return size;
}

}  // namespace toolbox::desktop
