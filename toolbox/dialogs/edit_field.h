// The only text record of a dialog, and the edit item that it edits. Private to
// the Dialog Manager.
#pragma once

#include "dialogs/dialog_list.h"

namespace toolbox::dialogs {

// Moves the text record to the edit item, whose characters it then edits in
// place. False when it is not an edit item or memory is short.
bool makeCurrent(Dialog &dialog, int number);
// Moves to the next edit item in item order (1) or the one before (-1), from the
// last to the first and back, and selects its whole text.
void tabTo(Dialog &dialog, int direction);
// To be called when others have changed the current item's rectangle or characters.
void refreshCurrent(Dialog &dialog);
void releaseText(Dialog &dialog);
// Draws frame and characters of an edit item.
void drawEditItem(Dialog &dialog, int number);
// Whether a text box of that size holds a single line, which scrolls sideways.
bool isSingleLine(const Rect &box);

}  // namespace toolbox::dialogs
