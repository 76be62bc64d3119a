// Drawing a control. Private to the Control Manager.
#pragma once

#include "toolbox/controls.h"

namespace toolbox::controls {

// Draws in the owner's port, if the control is visible.
void draw(ControlHandle control);
// Erases it and has the window redraw the place.
void erase(ControlHandle control);
// Changes contrlHilite and draws; nothing is traced.
void setHilite(ControlHandle control, uint8_t part);
bool isPushButton(const ControlRecord &control);

}  // namespace toolbox::controls
