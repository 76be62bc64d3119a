// Where a dialog's template wants it. Private to the Dialog Manager.
#pragma once

#include "toolbox/dialogs.h"

namespace toolbox::dialogs {

// The bounds moved as the template's position word says: centred, in the upper
// fifth as alerts are, or staggered, a step right and down for each visible
// window; on the main display. Other words leave the bounds as they are.
Rect placed(Rect bounds, int16_t position);

// A dialog that cannot be dragged, and part of which lies on no display, is moved
// onto the display that shows most of it, else the main one. One with a title bar
// stays where its program wants it.
void bringOntoDisplays(DialogPtr dialog);

}  // namespace toolbox::dialogs
