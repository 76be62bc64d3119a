// Making a dialog from what its template says. Private to the Dialog Manager.
#pragma once

#include "dialogs/dialog_list.h"
#include "dialogs/templates.h"

namespace toolbox::dialogs {

// Invisible, its items made, the first edit item current and selected. Nil
// when the item list is missing or memory is short; nothing is left then.
Dialog *make(int16_t id, const DialogTemplate &from, void *storage, WindowPtr behind);
// Watches windows, to trace what happens to dialogs.
void startWatching();

}  // namespace toolbox::dialogs
