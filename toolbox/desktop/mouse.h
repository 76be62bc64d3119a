// SDL's mouse events as the Toolbox's inputs. Private to the desktop machine.
#pragma once

#include <SDL.h>

#include "desktop/input_queue.h"

namespace toolbox::desktop {

// One button, the left. It counts as up from release() until it is pressed
// again, whatever the person's finger does.
class Mouse {
public:
    explicit Mouse(InputQueue &queue) : queue_(queue) {}

    // QuickDraw's pixels per unit of the window system.
    void setRatio(double pixelsPerUnit) { ratio_ = pixelsPerUnit; }
    // Moves, the left button, the right one, which is the left one with
    // Control, and the middle one, with Option; all other events do nothing. modifiers are the Toolbox's.
    void take(const SDL_Event &event, std::uint16_t modifiers);
    // Releases a held button, where the mouse is.
    void release(std::uint16_t modifiers);

private:
    void push(Input::Kind kind, std::uint16_t modifiers);
    void moveTo(int x, int y);

    InputQueue &queue_;
    double ratio_ = 1;
    Point where_{};
    std::uint8_t down_ = 0;   // SDL's number of the button, 0 none
};

}  // namespace toolbox::desktop
