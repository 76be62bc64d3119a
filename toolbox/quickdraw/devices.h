// The displays as graphics devices. Private to the Toolbox.
#pragma once

#include "toolbox/quickdraw.h"

namespace toolbox::quickdraw {

void startDevices();
void stopDevices();

// Asks the machine for its displays again, and updates the devices, the desktop
// region and the pixels of new displays. Devices returned before stay valid;
// those of displays that are gone are no longer in the list. True when anything
// has changed.
bool rebuildDevices();

}  // namespace toolbox::quickdraw
