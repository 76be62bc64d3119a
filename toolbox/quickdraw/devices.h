// The screens as graphics devices. Private to the Toolbox.
#pragma once

#include <functional>

#include "toolbox/quickdraw.h"

namespace toolbox::quickdraw {

// Asks the machine for its screens again: devices, the desktop region, the
// pixels of new screens. Devices handed out stay valid; those of screens that
// are gone are no longer in the list.
void rebuildDevices();

// Set by the Window Manager: called after screens have come, gone or changed,
// when all that is on them is to be drawn anew.
extern std::function<void()> screensDidChange;

}  // namespace toolbox::quickdraw
