#include "events/tracking.h"

#include <algorithm>

#include "events/input_state.h"
#include "toolbox/host/session.h"

namespace toolbox::events {
namespace {

bool isMouseEvent(const EventRecord &event)
{
    return event.what == mouseDown || event.what == mouseUp;
}

std::optional<Input> queuedMouseInput()
{
    auto found = std::find_if(state.queue.begin(), state.queue.end(), isMouseEvent);
    if (found == state.queue.end())
        return std::nullopt;
    Input input{.kind = found->what == mouseDown ? Input::Kind::mouseDown : Input::Kind::mouseUp,
                .where = found->where,
                .modifiers = static_cast<std::uint16_t>(found->modifiers & ~btnState)};
    state.queue.erase(found);
    return input;
}

bool isKey(const Input &input)
{
    return input.kind == Input::Kind::keyDown || input.kind == Input::Kind::autoKey;
}

constexpr std::uint32_t second = 60, hour = 3600 * second;

// The next mouse input within that many ticks.
std::optional<Input> mouseInput(std::uint32_t ticks)
{
    if (std::optional<Input> queued = queuedMouseInput())
        return queued;
    const std::uint32_t start = machine().ticks();
    for (;;) {
        const std::uint32_t passed = machine().ticks() - start;
        if (!state.buttonDown || state.quit || passed >= ticks)
            return std::nullopt;
        std::optional<Input> input = takeInput(std::min(second, ticks - passed));
        if (!input)
            continue;
        if (isMouse(*input))
            return input;
        queueEventFor(*input);
    }
}

}  // namespace

std::optional<Input> nextTrackingInput()
{
    return mouseInput(hour);
}

std::optional<Input> nextTrackingInput(std::uint32_t restTicks)
{
    std::optional<Input> input = mouseInput(std::max<std::uint32_t>(restTicks, 1));
    if (input || !state.buttonDown || state.quit)
        return input;
    return Input{.kind = Input::Kind::mouseMoved, .where = state.mouse, .modifiers = state.keys};
}

std::optional<Input> nextMenuInput(std::uint32_t waitTicks, MenuKeys keys)
{
    if (std::optional<Input> queued = queuedMouseInput())
        return queued;
    const std::uint32_t start = machine().ticks();
    while (!state.quit) {
        std::uint32_t passed = machine().ticks() - start;
        std::optional<Input> input = takeInput(waitTicks - std::min(passed, waitTicks));
        if (!input && machine().ticks() - start >= waitTicks)
            return std::nullopt;
        if (!input)
            continue;
        bool asked = keys == MenuKeys::wanted && isKey(*input);
        if (asked || isMouse(*input) || input->kind == Input::Kind::displaysChanged)
            return input;
        queueEventFor(*input);
    }
    return std::nullopt;
}

bool pressUnderway()
{
    return state.buttonDown || std::any_of(state.queue.begin(), state.queue.end(), isMouseEvent);
}

}  // namespace toolbox::events
