// Notices that the desktop's display has gone away: the X server or the compositor has ended, or cannot be reached.
// Private to the desktop machine.
#pragma once

#include <SDL.h>

struct wl_display;

namespace toolbox::desktop {

// Without it Xlib would print three lines and end the process where it stands.
class LostDisplay {
public:
    LostDisplay();
    LostDisplay(const LostDisplay &) = delete;

    void watch(SDL_Window *window);
    // From then on everything sent to the display is lost, and nothing comes from there.
    bool isLost() const;

private:
    void *xlib_;
    wl_display *wayland_ = nullptr;
};

}  // namespace toolbox::desktop
