#include "desktop/mouse.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "toolbox/events.h"

namespace toolbox::desktop {
namespace {

std::int16_t coordinate(double value)
{
    using Limits = std::numeric_limits<std::int16_t>;
    return static_cast<std::int16_t>(
        std::clamp(std::floor(value), static_cast<double>(Limits::min()), static_cast<double>(Limits::max())));
}

}  // namespace

void Mouse::take(const SDL_Event &event, std::uint16_t modifiers)
{
    using Kind = Input::Kind;
    if (event.type == SDL_MOUSEMOTION) {
        moveTo(event.motion.x, event.motion.y);
        return push(Kind::mouseMoved, modifiers);
    }
    if (event.type != SDL_MOUSEBUTTONDOWN && event.type != SDL_MOUSEBUTTONUP)
        return;
    const bool press = event.type == SDL_MOUSEBUTTONDOWN;
    const std::uint8_t button = event.button.button;
    const bool known = button == SDL_BUTTON_LEFT || button == SDL_BUTTON_RIGHT || button == SDL_BUTTON_MIDDLE;
    if (!known || down_ != (press ? 0 : button))
        return;
    down_ = press ? button : 0;
    moveTo(event.button.x, event.button.y);
    if (button == SDL_BUTTON_RIGHT)
        modifiers |= controlKey;
    if (button == SDL_BUTTON_MIDDLE)
        modifiers |= optionKey;
    push(press ? Kind::mouseDown : Kind::mouseUp, modifiers);
}

void Mouse::release(std::uint16_t modifiers)
{
    if (!down_)
        return;
    down_ = 0;
    push(Input::Kind::mouseUp, modifiers);
}

void Mouse::moveTo(int x, int y)
{
    where_ = Point{coordinate(y * ratio_), coordinate(x * ratio_)};
}

void Mouse::push(Input::Kind kind, std::uint16_t modifiers)
{
    queue_.push({.kind = kind, .where = where_, .modifiers = modifiers});
}

}  // namespace toolbox::desktop
