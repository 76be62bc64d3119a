#include "dialogs/making.h"

#include <cstring>

#include "dialogs/edit_field.h"
#include "dialogs/parameters.h"
#include "dialogs/placement.h"
#include "quickdraw/port_scope.h"
#include "toolbox/host/text.h"
#include "toolbox/host/trace.h"
#include "toolbox/memory.h"
#include "toolbox/resources.h"
#include "windows/window_list.h"

namespace toolbox::dialogs {
namespace {

bool makeText(Item &item, const std::string &data)
{
    return PtrToHand(data.data(), &item.handle, static_cast<Size>(data.size())) == noErr;
}

bool makeControl(Dialog &dialog, Item &item, const std::string &data)
{
    Str255 title;
    setPascal(title, data);
    int16_t procID = item.kind() & 3;
    item.handle = reinterpret_cast<Handle>(
        NewControl(dialog.pointer(), &item.box, title, item.box.left < 8192, 0, 0, 1, procID, 0));
    return item.handle != nullptr;
}

bool makeNumberedControl(Dialog &dialog, Item &item, int16_t id)
{
    auto from = readControl(id);
    if (!from)
        return true;   // an item without a control: there is nothing to press
    Str255 title;
    setPascal(title, from->title);
    item.box = from->box;
    item.handle = reinterpret_cast<Handle>(NewControl(dialog.pointer(), &from->box, title, from->visible, from->value,
                                                      from->min, from->max, from->procID, from->refCon));
    return item.handle != nullptr;
}

bool makeItem(Dialog &dialog, Item &item, const ItemTemplate &from)
{
    item.box = from.box;
    item.type = from.type;
    if (item.isText())
        return makeText(item, from.data);
    if (item.kind() == ctrlItem + resCtrl)
        return makeNumberedControl(dialog, item, from.number());
    if (item.isControl())
        return makeControl(dialog, item, from.data);
    if (item.kind() == iconItem || item.kind() == picItem) {
        item.resource = from.number();
        item.handle = GetResource(item.kind() == iconItem ? 'ICON' : 'PICT', item.resource);
    }
    return true;
}

// False when there is an edit item but no memory to edit it.
bool selectFirstEditItem(Dialog &dialog)
{
    for (int number = 1; number <= static_cast<int>(dialog.items.size()); ++number)
        if (dialog.item(number)->kind() == editText) {
            SelIText(dialog.pointer(), static_cast<int16_t>(number), 0, 32767);
            return dialog.isCurrent(number);
        }
    return true;
}

bool makeItems(Dialog &dialog, const std::vector<ItemTemplate> &from)
{
    quickdraw::PortScope current(dialog.pointer());
    for (const ItemTemplate &item : from) {
        dialog.items.emplace_back();
        if (!makeItem(dialog, dialog.items.back(), item))
            return false;
    }
    return selectFirstEditItem(dialog);
}

// A table of colours with the dialog's number belongs to it.
void applyColors(Dialog &dialog)
{
    if (Handle colors = GetResource(dialog.alert ? 'actb' : 'dctb', dialog.id))
        SetWinColor(dialog.pointer(), colors);
}

DialogPeek makeWindow(const DialogTemplate &from, void *storage, WindowPtr behind)
{
    Ptr block = storage ? static_cast<Ptr>(storage) : NewPtr(sizeof(DialogRecord));
    if (!block)
        return nullptr;
    std::memset(block, 0, sizeof(DialogRecord));
    Str255 title;
    setPascal(title, from.title);
    WindowPtr window = NewWindow(block, &from.bounds, title, false, from.procID, behind, from.goAway, from.refCon);
    if (!window && !storage)
        DisposePtr(block);
    return peek(window);
}

std::string placeAndSize(DialogPtr dialog)
{
    Point corner{dialog->portRect.top, dialog->portRect.left};
    quickdraw::PortScope current(dialog);
    LocalToGlobal(&corner);
    return std::to_string(corner.h) + "," + std::to_string(corner.v) + " " +
           std::to_string(dialog->portRect.right - dialog->portRect.left) + "x" +
           std::to_string(dialog->portRect.bottom - dialog->portRect.top);
}

void watch(WindowPtr window, windows::Change change)
{
    const Dialog *dialog = find(window);
    if (!dialog || !dialog->complete)
        return;
    if (change == windows::Change::shown)
        bringOntoDisplays(window);
    const char *kind = dialog->alert ? "alert" : "dialog";
    if (change == windows::Change::shown)
        trace::line("%s %d shown at %s", kind, dialog->id, placeAndSize(window).c_str());
    else if (!dialog->alert)
        trace::line("dialog %d %s", dialog->id, change == windows::Change::hidden ? "hidden" : "closed");
}

}  // namespace

Dialog *make(int16_t id, const DialogTemplate &from, void *storage, WindowPtr behind)
{
    auto items = readItems(from.itemsID);
    if (!items)
        return nullptr;
    DialogPeek record = makeWindow(from, storage, behind);
    if (!record)
        return nullptr;
    Dialog &dialog = dialogs.emplace_front();
    dialog.record = record;
    dialog.id = id;
    dialog.alert = from.alert;
    dialog.ownsRecord = !storage;
    record->window.windowKind = dialogKind;
    record->editField = -1;
    record->aDefItem = 1;
    dialog.master = reinterpret_cast<Ptr>(&dialog);
    record->items = &dialog.master;
    if (makeItems(dialog, *items)) {
        applyColors(dialog);
        dialog.complete = true;
        return &dialog;
    }
    CloseDialog(dialog.pointer());
    return nullptr;
}

void startWatching()
{
    windows::watcher = watch;
}

}  // namespace toolbox::dialogs
