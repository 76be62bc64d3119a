// What a request to end the program (toolbox/host/quit.h) does to a dialog.
// Private to the Dialog Manager.
#pragma once

#include <optional>

#include "dialogs/dialog_list.h"

namespace toolbox::dialogs {

// To be called with each event. Once no other event waits, asks the dialog to
// cancel if the program is to end. Returns the item that ModalDialog is to
// return, or nothing when the dialog stays up. If it returns an item, the filter
// may have closed the dialog.
std::optional<int16_t> askToCancelIfQuitting(Dialog &dialog, const EventRecord &event, ModalFilterProcPtr filter);

}  // namespace toolbox::dialogs
