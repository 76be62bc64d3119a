// The mouse, input by input, for managers that track it until it is released.
// Private to the Toolbox.
#pragma once

#include <optional>

#include "toolbox/host/machine.h"

namespace toolbox::events {

// Waits for the next mouseMoved, mouseDown or mouseUp, takes it (it will not
// become an event) and returns it. Keys typed meanwhile become events as usual.
// Nothing when no more is to come: the button is up and no mouse input was
// queued, the program is asked to end, or an hour has passed with the button
// held. A tracking loop then ends as it does at a mouseUp outside.
std::optional<Input> nextTrackingInput();
// For trackers that act while the mouse rests: after restTicks (at least 1)
// without mouse input returns a mouseMoved to where the mouse is.
std::optional<Input> nextTrackingInput(std::uint32_t restTicks);

// The same for menus, which may stay open with the button up: also takes and
// returns displaysChanged and, when keys are wanted, keyDown and autoKey. Waits
// waitTicks at most; nothing when they have passed or the program is asked to
// end.
enum class MenuKeys { becomeEvents, wanted };
std::optional<Input> nextMenuInput(std::uint32_t waitTicks, MenuKeys keys);
// Whether the button is down, or was released but the release not yet taken.
bool pressUnderway();

}  // namespace toolbox::events
