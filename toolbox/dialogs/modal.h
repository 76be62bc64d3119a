// The modal loop, for dialogs and alerts. Private to the Dialog Manager.
#pragma once

#include "dialogs/dialog_list.h"

namespace toolbox::dialogs {

// Runs until an enabled item of the dialog is hit or the filter returns true, and
// returns the item, or what the filter stored. Nil filter: Return and Enter press
// the default item.
int16_t runModally(DialogPtr dialog, ModalFilterProcPtr filter);

}  // namespace toolbox::dialogs
