// SDL's key and text events as the Toolbox's key inputs. Private to the desktop
// machine.
#pragma once

#include <SDL.h>

#include <functional>
#include <map>
#include <optional>
#include <string>

#include "desktop/input_queue.h"

namespace toolbox::desktop {

// cmdKey and the like for SDL's modifiers.
std::uint16_t toolboxModifiers(int sdlModifiers);

// A key press and the text it types are two SDL events, the second of which may
// never come (a dead key) or come alone (an input method). Keys that type nothing
// and keys with Command are taken from the first, all others from the second, so
// that no character is lost and none comes twice.
class Keyboard {
public:
    // Inputs go into the queue, which must outlive this. refused is called for
    // text that Mac OS Roman does not have.
    Keyboard(InputQueue &queue, std::function<void()> refused);

    // Key down, key up and text events in the order they came; all others do
    // nothing.
    void take(const SDL_Event &event);
    // To be called when all that had arrived has been taken: a press without text
    // so far has none.
    void settle();

private:
    struct Press {
        SDL_Keysym key{};
        bool repeat = false;
    };
    struct Stroke {
        std::uint8_t character = 0;
        std::uint8_t keyCode = 0;
    };
    void keyDown(const SDL_KeyboardEvent &event);
    void keyUp(const SDL_KeyboardEvent &event);
    void text(const std::string &utf8);
    void type(const std::string &roman);
    void strike(const Press &press, const Stroke &stroke);
    void push(Input::Kind kind, const Stroke &stroke);

    InputQueue &queue_;
    std::function<void()> refused_;
    std::optional<Press> pending_;          // its text is still to come
    std::map<SDL_Scancode, Stroke> down_;   // keys that gave an input and are held
    int modifiers_ = 0;                     // SDL's, as of the newest key event
};

}  // namespace toolbox::desktop
