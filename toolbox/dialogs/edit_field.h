// The one text record of a dialog, and the edit item it is with. Private to the
// Dialog Manager.
#pragma once

#include "dialogs/dialog_list.h"

namespace toolbox::dialogs {

// Moves the text record to the edit item, whose characters it then edits in
// place. False when it is no edit item or memory is short.
bool makeCurrent(Dialog &dialog, int number);
// To the next edit item in item order (1) or the one before (-1), around the
// ends, its whole text selected.
void tabTo(Dialog &dialog, int direction);
// The item's rectangle or characters were changed by others.
void refreshCurrent(Dialog &dialog);
void releaseText(Dialog &dialog);
// Frame and characters of an edit item.
void drawEditItem(Dialog &dialog, int number);
// Whether a text box of that size holds one line, which scrolls sideways.
bool isSingleLine(const Rect &box);

}  // namespace toolbox::dialogs
