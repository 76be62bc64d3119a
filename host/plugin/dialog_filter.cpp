#include "plugin/dialog_filter.h"

#include "toolbox/host/click_at.h"

namespace riders::plugin {
namespace {

enum { firstPopup = 4, popups = 6 };

DialogWatcher dialogWatcher;

void clickItem(DialogPtr dialog, int16_t item)
{
    int16_t type = 0;
    Handle handle = nullptr;
    Rect box{};
    GetDItem(dialog, item, &type, &handle, &box);
    Point middle{static_cast<int16_t>((box.top + box.bottom) / 2),
                 static_cast<int16_t>((box.left + box.right) / 2)};
    GrafPtr before;
    GetPort(&before);
    SetPort(dialog);
    LocalToGlobal(&middle);
    SetPort(before);
    toolbox::clickAt(middle);
}

}  // namespace

void setDialogWatcher(DialogWatcher watcher)
{
    dialogWatcher = std::move(watcher);
}

extern "C" Boolean standardDialogFilter(DialogPtr dialog, EventRecord *event, int16_t *)
{
    if (dialogWatcher)
        dialogWatcher(dialog);
    bool isKey = event->what == keyDown || event->what == autoKey;
    if (!isKey)
        return false;
    const auto character = static_cast<int16_t>(event->message & charCodeMask);
    if (event->modifiers & cmdKey)
        return DlgCommandKey(dialog, character);
    if (event->what != keyDown || character < '1' || character >= '1' + popups)
        return false;
    clickItem(dialog, static_cast<int16_t>(firstPopup + character - '1'));
    return true;
}

}  // namespace riders::plugin
