// Icons in dialogs and alerts. Private to the Dialog Manager.
#pragma once

#include "toolbox/quickdraw.h"

namespace toolbox::dialogs {

// Draws into the current port, 32 by 32 pixels from the box's top left: the
// 'ICON', or a built-in drawing of 0 (stop), 1 (note) and 2 (caution) if there is
// none. Loads a purged icon again.
void drawIcon(Handle icon, int16_t number, const Rect &box);

}  // namespace toolbox::dialogs
