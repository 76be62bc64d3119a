// The classic characters and codes of keys. Private to the desktop machine.
#pragma once

#include <SDL.h>

#include <cstdint>
#include <optional>

namespace toolbox::desktop {

// The virtual code of the key in that place of the keyboard, whatever its
// layout; 0 (that of A) if the old keyboards had none.
std::uint8_t keyCodeOf(SDL_Scancode place);
// The character of a key that types no text: Return, an arrow, F1.
std::optional<std::uint8_t> characterOfNamedKey(SDL_Keycode key);
// The key that a key of the number pad stands for while it types no digits.
struct NavigationKey {
    SDL_Keycode key;
    SDL_Scancode place;
};
std::optional<NavigationKey> navigationKey(SDL_Scancode place);
// What the key types with neither Shift nor Option: Mac OS Roman by the layout,
// or, if it is a letter key and the layout's character is not ASCII, the letter in
// that place of a Latin keyboard.
std::optional<std::uint8_t> plainCharacter(const SDL_Keysym &key);

}  // namespace toolbox::desktop
