// The host's standard dialog filter: what all its dialogs have in common.
#pragma once

#include "toolbox/dialogs.h"

namespace riders::plugin {

// Command-X, C and V on the dialog's edit text; all else is left to the dialog.
extern "C" Boolean standardDialogFilter(DialogPtr dialog, EventRecord *event, int16_t *itemHit);

}  // namespace riders::plugin
