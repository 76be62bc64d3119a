#include "plugin/dialog_filter.h"

#include "toolbox/scrap.h"

namespace riders {

extern "C" Boolean standardDialogFilter(DialogPtr dialog, EventRecord *event, int16_t *)
{
    bool isKey = event->what == keyDown || event->what == autoKey;
    bool hasText = reinterpret_cast<DialogPeek>(dialog)->editField >= 0;
    if (!isKey || !hasText || !(event->modifiers & cmdKey))
        return false;
    switch (event->message & charCodeMask) {
    case 'x':
        DlgCut(dialog);
        break;
    case 'c':
        DlgCopy(dialog);
        break;
    case 'v':
        DlgPaste(dialog);
        return true;
    default:
        return false;
    }
    ZeroScrap();
    TEToScrap();
    return true;
}

}  // namespace riders
