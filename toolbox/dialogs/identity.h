// Which resource a dialog was made from. Private to the Toolbox.
#pragma once

#include <cstdint>

#include "toolbox/dialogs.h"

namespace toolbox::dialogs {

// The number of its 'DLOG' or 'ALRT'; 0 for a window that is not a dialog.
std::int16_t idOf(DialogPtr dialog);
bool isAlert(DialogPtr dialog);

}  // namespace toolbox::dialogs
