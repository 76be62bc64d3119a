// What the wish to end the program means to a dialog; toolbox/host/quit.h tells
// it. Private to the Dialog Manager.
#pragma once

#include <optional>

#include "dialogs/dialog_list.h"

namespace toolbox::dialogs {

// To be called with each event. Once no other event waits, asks the dialog to
// cancel if the program is to end. The item that ModalDialog is to answer;
// nothing when the dialog stays up. With an answer the filter may have closed
// the dialog.
std::optional<int16_t> askToCancelIfQuitting(Dialog &dialog, const EventRecord &event, ModalFilterProcPtr filter);

}  // namespace toolbox::dialogs
