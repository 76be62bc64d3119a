// A button that is pressed by a key.
#pragma once

#include "toolbox/controls.h"

namespace toolbox {

// Shows the button pressed for 8 ticks (60 to the second), which pass meanwhile.
// The button must not be nil; whether it is dimmed is the caller's to look at.
// Between start and stop of the Toolbox.
void flashButton(ControlHandle button);

}  // namespace toolbox
