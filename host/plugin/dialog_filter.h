// The host's standard dialog filter: what all its dialogs have in common.
#pragma once

#include <functional>

#include "toolbox/dialogs.h"

namespace riders::plugin {

// The keys that the settings dialog leaves free. Command-X, C, V, A and Z on its edit text, as in all dialogs; the
// digits from 1 open its popups, from the top down, as a click would: then the arrows, Return and Escape are those
// of any menu. All else is left to the dialog.
extern "C" Boolean standardDialogFilter(DialogPtr dialog, EventRecord *event, int16_t *itemHit);

// Called with the settings dialog at each event that the filter gets, idle time among them, before anything is
// done about it; the first comes before the dialog is drawn. Empty: nobody watches.
using DialogWatcher = std::function<void(DialogPtr)>;
void setDialogWatcher(DialogWatcher watcher);

}  // namespace riders::plugin
