#include "desktop/keyboard.h"

#include "desktop/key_table.h"
#include "toolbox/events.h"
#include "toolbox/host/text.h"
#include "toolbox/host/utf8.h"

namespace toolbox::desktop {
namespace {

// AltGr chooses a character of the layout, whatever else is held.
bool isCommand(int modifiers)
{
    return (modifiers & (KMOD_CTRL | KMOD_GUI)) && !(modifiers & (KMOD_RALT | KMOD_MODE));
}

}  // namespace

std::uint16_t toolboxModifiers(int sdlModifiers)
{
    struct {
        int sdl;
        std::uint16_t toolbox;
    } const pairs[] = {{KMOD_CTRL | KMOD_GUI, cmdKey},
                       {KMOD_SHIFT, shiftKey},
                       {KMOD_ALT | KMOD_MODE, optionKey},
                       {KMOD_CAPS, alphaLock}};
    std::uint16_t modifiers = 0;
    for (const auto &pair : pairs)
        if (sdlModifiers & pair.sdl)
            modifiers |= pair.toolbox;
    return modifiers;
}

Keyboard::Keyboard(InputQueue &queue, std::function<void()> refused) : queue_(queue), refused_(std::move(refused))
{
}

void Keyboard::take(const SDL_Event &event)
{
    switch (event.type) {
    case SDL_KEYDOWN: return keyDown(event.key);
    case SDL_KEYUP: return keyUp(event.key);
    case SDL_TEXTINPUT: return text(event.text.text);
    }
}

void Keyboard::keyDown(const SDL_KeyboardEvent &event)
{
    settle();
    modifiers_ = event.keysym.mod;
    pending_.reset();
    const Press press{event.keysym, event.repeat != 0};
    if (auto character = characterOfNamedKey(event.keysym.sym))
        strike(press, {*character, keyCodeOf(event.keysym.scancode)});
    else
        pending_ = press;
}

void Keyboard::settle()
{
    if (!pending_)
        return;
    const SDL_Keysym &key = pending_->key;
    std::optional<Stroke> stroke;
    if (isCommand(key.mod)) {
        if (auto character = plainCharacter(key))
            stroke = {*character, keyCodeOf(key.scancode)};
    } else if (auto other = navigationKey(key.scancode)) {
        stroke = {characterOfNamedKey(other->key).value(), keyCodeOf(other->place)};
    }
    if (!stroke)
        return;
    strike(*pending_, *stroke);
    pending_.reset();
}

void Keyboard::keyUp(const SDL_KeyboardEvent &event)
{
    settle();
    modifiers_ = event.keysym.mod;
    auto held = down_.find(event.keysym.scancode);
    if (held == down_.end())
        return;
    push(Input::Kind::keyUp, held->second);
    down_.erase(held);
}

// With Command held, some keys still type their text (Ctrl and a period) and some
// do not; only the period matters, which may need Shift.
void Keyboard::text(const std::string &utf8)
{
    if (isCommand(modifiers_)) {
        if (pending_ && utf8 == ".") {
            strike(*pending_, {'.', keyCodeOf(pending_->key.scancode)});
            pending_.reset();
        }
        return settle();
    }
    if (auto roman = romanFromUtf8(utf8))
        return type(*roman);
    std::string known;
    for (std::size_t at = 0, end; at < utf8.size(); at = end) {
        end = endOfCharacter(utf8, at);
        known += romanFromUtf8(utf8.substr(at, end - at)).value_or("");
    }
    type(known);
    refused_();
}

void Keyboard::type(const std::string &roman)
{
    for (char typed : roman) {
        const auto character = static_cast<std::uint8_t>(typed);
        if (pending_)
            strike(*pending_, {character, keyCodeOf(pending_->key.scancode)});
        else
            push(Input::Kind::keyDown, {character, 0});
        pending_.reset();
    }
}

void Keyboard::strike(const Press &press, const Stroke &stroke)
{
    down_[press.key.scancode] = stroke;
    push(press.repeat ? Input::Kind::autoKey : Input::Kind::keyDown, stroke);
}

void Keyboard::push(Input::Kind kind, const Stroke &stroke)
{
    queue_.push({.kind = kind,
                 .character = stroke.character,
                 .keyCode = stroke.keyCode,
                 .modifiers = toolboxModifiers(modifiers_)});
}

}  // namespace toolbox::desktop
