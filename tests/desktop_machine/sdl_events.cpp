#include "desktop_machine/sdl_events.h"

#include <cstdio>

#include "toolbox/events.h"
#include "toolbox/host/text.h"
#include "toolbox/keys.h"

namespace sdl {
namespace {

SDL_Event key(std::uint32_t type, SDL_Scancode place, SDL_Keycode sym, int modifiers, bool repeat)
{
    SDL_Event event{};
    event.type = type;
    event.key.state = type == SDL_KEYDOWN ? SDL_PRESSED : SDL_RELEASED;
    event.key.repeat = repeat;
    event.key.keysym.scancode = place;
    event.key.keysym.sym = sym;
    event.key.keysym.mod = static_cast<std::uint16_t>(modifiers);
    return event;
}

std::string keyText(const toolbox::Input &input)
{
    char code[8];
    std::snprintf(code, sizeof code, "%02x", input.keyCode);
    if (input.character > ' ' && input.character != toolbox::key::forwardDelete)
        return toolbox::utf8FromRoman(std::string(1, static_cast<char>(input.character))) + "/" + code;
    char character[8];
    std::snprintf(character, sizeof character, "#%02x", input.character);
    return std::string(character) + "/" + code;
}

std::string modifierText(std::uint16_t modifiers)
{
    std::string text;
    const struct {
        std::uint16_t bit;
        char letter;
    } names[] = {{cmdKey, 'c'}, {shiftKey, 's'}, {optionKey, 'o'}, {alphaLock, 'l'}, {controlKey, '^'}};
    for (const auto &name : names)
        if (modifiers & name.bit)
            text += name.letter;
    return text.empty() ? "" : "+" + text;
}

}  // namespace

SDL_Event pressed(SDL_Scancode place, SDL_Keycode sym, int modifiers, bool repeat)
{
    return key(SDL_KEYDOWN, place, sym, modifiers, repeat);
}

SDL_Event released(SDL_Scancode place, SDL_Keycode sym, int modifiers)
{
    return key(SDL_KEYUP, place, sym, modifiers, false);
}

SDL_Event text(const std::string &utf8)
{
    SDL_Event event{};
    event.type = SDL_TEXTINPUT;
    utf8.copy(event.text.text, sizeof event.text.text - 1);
    return event;
}

SDL_Event move(int x, int y)
{
    SDL_Event event{};
    event.type = SDL_MOUSEMOTION;
    event.motion.x = x;
    event.motion.y = y;
    return event;
}

SDL_Event button(std::uint32_t type, int x, int y, int number)
{
    SDL_Event event{};
    event.type = type;
    event.button.button = static_cast<std::uint8_t>(number);
    event.button.state = type == SDL_MOUSEBUTTONDOWN ? SDL_PRESSED : SDL_RELEASED;
    event.button.x = x;
    event.button.y = y;
    return event;
}

std::string described(const toolbox::Input &input)
{
    using Kind = toolbox::Input::Kind;
    const std::string where = "(" + std::to_string(input.where.h) + "," + std::to_string(input.where.v) + ")";
    const std::string modifiers = modifierText(input.modifiers);
    switch (input.kind) {
    case Kind::mouseMoved: return "move" + where + modifiers;
    case Kind::mouseDown: return "press" + where + modifiers;
    case Kind::mouseUp: return "release" + where + modifiers;
    case Kind::keyDown: return "down:" + keyText(input) + modifiers;
    case Kind::keyUp: return "up:" + keyText(input) + modifiers;
    case Kind::autoKey: return "again:" + keyText(input) + modifiers;
    case Kind::displaysChanged: return "displays";
    case Kind::clipboardChanged: return "clipboard";
    case Kind::quit: return "quit";
    case Kind::fileDropped: return "dropped:" + input.path;
    }
    return "?";
}

std::string described(toolbox::desktop::InputQueue &queue)
{
    std::string all;
    while (auto input = queue.take())
        all += (all.empty() ? "" : " ") + described(*input);
    return all;
}

}  // namespace sdl
