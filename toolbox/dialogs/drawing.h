// Drawing a dialog's items. Private to the Dialog Manager.
#pragma once

#include "dialogs/dialog_list.h"

namespace toolbox::dialogs {

void drawItem(Dialog &dialog, int number);
void drawAll(Dialog &dialog);
// 32 by 32 pixels from that corner: the 'ICON', or our own drawing of 0 (stop),
// 1 (note) and 2 (caution) where nobody has given one.
void drawIcon(Handle icon, int16_t number, const Rect &box);

}  // namespace toolbox::dialogs
