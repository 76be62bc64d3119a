// Closing dialogs.
#include "dialogs/dialog_list.h"
#include "dialogs/edit_field.h"
#include "toolbox/memory.h"

using namespace toolbox;
using namespace toolbox::dialogs;

static void close(DialogPtr dialog, bool freeRecord)
{
    Dialog *closing = find(dialog);
    if (!closing)
        return;
    releaseText(*closing);
    for (const Item &item : closing->items)
        if (item.isText())
            DisposeHandle(item.handle);
    CloseWindow(dialog);
    freeRecord = freeRecord || closing->ownsRecord;
    dialogs::dialogs.remove_if([&](const Dialog &candidate) { return &candidate == closing; });
    if (freeRecord)
        DisposePtr(reinterpret_cast<Ptr>(dialog));
}

void CloseDialog(DialogPtr dialog)
{
    close(dialog, false);
}

void DisposDialog(DialogPtr dialog)
{
    close(dialog, true);
}
