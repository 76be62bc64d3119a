// Making a dialog from what its template says. Private to the Dialog Manager.
#pragma once

#include "dialogs/dialog_list.h"
#include "dialogs/templates.h"

namespace toolbox::dialogs {

// Makes it invisible, with its items, the first edit item current and selected.
// Nil when the item list is missing or memory is short; then nothing is left over.
Dialog *make(int16_t id, const DialogTemplate &from, void *storage, WindowPtr behind);
// Watches windows, to trace what happens to dialogs.
void startWatching();

}  // namespace toolbox::dialogs
