#include "plugin/dialog_filter.h"

namespace riders::plugin {

extern "C" Boolean standardDialogFilter(DialogPtr dialog, EventRecord *event, int16_t *)
{
    bool isKey = event->what == keyDown || event->what == autoKey;
    if (!isKey || !(event->modifiers & cmdKey))
        return false;
    return DlgCommandKey(dialog, static_cast<int16_t>(event->message & charCodeMask));
}

}  // namespace riders::plugin
