// Drawing a control. Private to the Control Manager.
#pragma once

#include "toolbox/controls.h"

namespace toolbox::controls {

// In the owner's port, if the control is visible.
void draw(ControlHandle control);
// Takes its pixels away and has the window draw what it covered.
void erase(ControlHandle control);
// Changes contrlHilite and draws; nothing is traced.
void setHilite(ControlHandle control, uint8_t part);
bool isPushButton(const ControlRecord &control);

}  // namespace toolbox::controls
