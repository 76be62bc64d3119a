#include "events/input_state.h"

#include "events/queue.h"
#include "quickdraw/devices.h"
#include "quickdraw/present.h"
#include "toolbox/host/session.h"

namespace toolbox::events {

InputState state;
std::function<void()> displaysChanged;

using Kind = Input::Kind;

bool isMouse(const Input &input)
{
    return input.kind == Kind::mouseMoved || input.kind == Kind::mouseDown || input.kind == Kind::mouseUp;
}

bool matches(std::int16_t mask, const EventRecord &event)
{
    return static_cast<std::uint16_t>(mask) >> event.what & 1;
}

EventRecord eventNow(std::int16_t what, std::uintptr_t message)
{
    EventRecord event{};
    event.what = what;
    event.message = message;
    event.when = machine().ticks();
    event.where = state.mouse;
    event.modifiers = static_cast<std::uint16_t>(state.keys | (state.buttonDown ? 0 : btnState));
    return event;
}

static void note(const Input &input)
{
    constexpr std::uint16_t keyBits = cmdKey | shiftKey | alphaLock | optionKey | controlKey;
    if (isMouse(input))
        state.mouse = input.where;
    switch (input.kind) {
    case Kind::displaysChanged:
        quickdraw::rebuildDevices();
        if (displaysChanged)
            displaysChanged();
        return;
    case Kind::clipboardChanged:
        return;  // the Scrap Manager looks at the clipboard's serial itself
    case Kind::quit:
        state.quit = true;
        return;
    case Kind::fileDropped:
        state.dropped.emplace_back(input.path);
        return;
    case Kind::mouseDown:
    case Kind::mouseUp:
        state.buttonDown = input.kind == Kind::mouseDown;
        break;
    default:
        break;
    }
    state.keys = input.modifiers & keyBits;
}

std::optional<Input> takeInput(std::uint32_t waitTicks)
{
    quickdraw::presentDisplays();
    std::optional<Input> input = machine().nextInput(waitTicks);
    if (input)
        note(*input);
    return input;
}

static std::uintptr_t keyMessage(const Input &input)
{
    return static_cast<std::uintptr_t>(input.keyCode) << 8 | input.character;
}

void queueEventFor(const Input &input)
{
    switch (input.kind) {
    case Kind::mouseDown:
        state.queue.push_back(eventNow(mouseDown));
        break;
    case Kind::mouseUp:
        state.queue.push_back(eventNow(mouseUp));
        break;
    case Kind::keyDown:
        state.queue.push_back(eventNow(keyDown, keyMessage(input)));
        break;
    case Kind::autoKey:
        state.autoKey = eventNow(autoKey, keyMessage(input));
        break;
    case Kind::keyUp:  // releasing a key makes no event, but ends the repeat
        state.autoKey.reset();
        break;
    default:
        break;
    }
}

}  // namespace toolbox::events
