// What the Event Manager takes from the Window Manager, and what it keeps for
// others. Private to the Toolbox.
#pragma once

#include <cstdint>
#include <functional>

#include "toolbox/windows.h"

namespace toolbox::events {

// Queues an activate (or deactivate) event. They are delivered in the order
// posted, before all others.
void postActivate(WindowPtr window, bool active);
// Drops what is queued for a window that is going away.
void forgetWindow(WindowPtr window);

// Set by the Window Manager: the frontmost window with something to draw, nil
// when there is none. Asked whenever an update event could be delivered; the
// same window is returned again until its update region is empty.
extern std::function<WindowPtr()> nextWindowNeedingUpdate;

// Set by the Window Manager: called when the machine has announced that its
// displays have changed, once QuickDraw knows.
extern std::function<void()> displaysChanged;

// The event of a key pressed now, for asking a program for something by a key.
// Not queued.
EventRecord keyStruck(std::uint8_t character, std::uint8_t keyCode, std::uint16_t modifiers = 0);

}  // namespace toolbox::events
