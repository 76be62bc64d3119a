// Showing that a key presses a button.
#pragma once

#include "toolbox/controls.h"

namespace toolbox {

// Shows the button pressed for 8 ticks (60 per second), and returns after them.
// The button must not be nil; the caller checks whether it is dimmed. Between
// start and stop of the Toolbox.
void flashButton(ControlHandle button);

}  // namespace toolbox
