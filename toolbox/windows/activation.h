// Which window is active: the frontmost visible one. Private to the Window
// Manager.
#pragma once

#include "windows/window_list.h"

namespace toolbox::windows {

// Compares the frontmost window with the one that was active, and posts the
// events that activate it instead.
void updateActivation();
// The window is going away: no more events for it.
void forgetWindow(WindowPeek record);
void forgetActivation();

}  // namespace toolbox::windows
