// Drawing a dialog's items. Private to the Dialog Manager.
#pragma once

#include "dialogs/dialog_list.h"

namespace toolbox::dialogs {

void drawItem(Dialog &dialog, int number);
void drawAll(Dialog &dialog);

}  // namespace toolbox::dialogs
