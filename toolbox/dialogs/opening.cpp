// Opening dialogs from their resources.
#include "toolbox/dialogs.h"

#include "dialogs/making.h"

using namespace toolbox;
using namespace toolbox::dialogs;

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
