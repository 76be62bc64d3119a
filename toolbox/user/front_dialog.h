// What the scripted user sees of the dialog in front. Private to the scripted
// user.
#pragma once

#include "toolbox/dialogs.h"

namespace toolbox::user {

// Nil when no window is open or the front one is not a dialog.
DialogPtr frontDialog();
// Its number; 0 when none is in front.
int frontDialogID();

// Whether it is a message: texts and buttons, and nothing to fill in or choose from.
bool messageInFront();

// Whether the item is a control that is dimmed now.
bool isDimmed(int item);
// The middle of the item, global. Throws Problem for an item that does not exist
// or is not visible.
Point middleOf(int item);
// The same; throws Problem for a dimmed control too.
Point pressableMiddleOf(int item);

Point middle(const Rect &r);

}  // namespace toolbox::user
