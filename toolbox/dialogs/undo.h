// Taking back what was last done to the text of a dialog. Private to the Dialog Manager.
#pragma once

#include "dialogs/dialog_list.h"

namespace toolbox::dialogs {

// To be called before the current edit item's text changes. Characters typed one after the other are one change.
enum class Change { typing, other };
void keepForUndo(Dialog &dialog, Change change);
// What is typed from here on is another change: the caret was moved.
void endTyping(Dialog &dialog);
// Puts back text and selection as they were; once more, and the change is there again. Nothing where there is
// none.
void undo(Dialog &dialog);

}  // namespace toolbox::dialogs
