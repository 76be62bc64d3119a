// SDL's events as a window would send them, and inputs as a line of text.
#pragma once

#include <SDL.h>

#include <string>

#include "desktop/input_queue.h"

namespace sdl {

SDL_Event pressed(SDL_Scancode place, SDL_Keycode key, int modifiers = 0, bool repeat = false);
SDL_Event released(SDL_Scancode place, SDL_Keycode key, int modifiers = 0);
SDL_Event text(const std::string &utf8);
SDL_Event move(int x, int y);
SDL_Event button(std::uint32_t type, int x, int y, int number = SDL_BUTTON_LEFT);

// Each input as its kind and what it carries, joined by blanks and emptying the
// queue: "down:a/00 up:a/00" for keys (character and code), with "+c" and so on
// for modifiers; "press(3,4)" for the mouse.
std::string described(toolbox::desktop::InputQueue &queue);
std::string described(const toolbox::Input &input);

}  // namespace sdl
