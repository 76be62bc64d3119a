// Opening and closing dialogs.
#include "toolbox/dialogs.h"

#include "dialogs/dialog_list.h"
#include "dialogs/edit_field.h"
#include "dialogs/making.h"
#include "dialogs/parameters.h"
#include "managers.h"
#include "textedit/record.h"
#include "textedit/scrap.h"
#include "toolbox/memory.h"

using namespace toolbox;
using namespace toolbox::dialogs;

namespace toolbox::managers {

void startDialogs(const Configuration &)
{
    dialogs::dialogs.clear();
    forgetParameters();
    ResetAlrtStage();
    textedit::startScrap();
    textedit::forgetPresses();
    startWatching();
}

void stopDialogs()
{
    // Whatever is still open goes with the heap.
    dialogs::dialogs.clear();
    textedit::stopScrap();
}

}  // namespace toolbox::managers

DialogPtr GetNewDialog(int16_t id, void *storage, WindowPtr behind)
{
    auto from = readDialog(id);
    if (!from)
        return nullptr;
    Dialog *dialog = make(id, *from, storage, behind);
    if (!dialog)
        return nullptr;
    if (from->visible)
        ShowWindow(dialog->pointer());
    return dialog->pointer();
}

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
