// Reading and changing a dialog's items.
#include <algorithm>
#include <cstring>

#include "dialogs/dialog_list.h"
#include "dialogs/drawing.h"
#include "dialogs/edit_field.h"
#include "quickdraw/port_scope.h"
#include "toolbox/dialogs.h"
#include "toolbox/memory.h"

using namespace toolbox;
using namespace toolbox::dialogs;

namespace {

// Items beyond this are hidden, moved there by the offset.
constexpr int16_t farRight = 8192;
constexpr int16_t hidingOffset = 16384;
constexpr int16_t frameWidth = 4;   // what an edit item draws around its box

Item *itemOf(DialogPtr dialog, int number)
{
    Dialog *found = find(dialog);
    return found ? found->item(number) : nullptr;
}

ControlHandle controlOf(const Item &item)
{
    return item.isControl() ? reinterpret_cast<ControlHandle>(item.handle) : nullptr;
}

Rect drawnArea(const Item &item)
{
    Rect area = item.box;
    if (item.kind() == editText)
        InsetRect(&area, -frameWidth, -frameWidth);
    return area;
}

void moveAcross(Dialog &dialog, int number, int16_t by)
{
    Rect &box = dialog.item(number)->box;
    box.left = static_cast<int16_t>(box.left + by);
    box.right = static_cast<int16_t>(box.right + by);
    if (dialog.isCurrent(number))
        refreshCurrent(dialog);
}

struct Place {
    Dialog *dialog = nullptr;
    int number = 0;
};

Place placeOfText(Handle text)
{
    for (Dialog &dialog : dialogs::dialogs)
        for (size_t i = 0; i < dialog.items.size(); ++i)
            if (dialog.items[i].isText() && dialog.items[i].handle == text)
                return {&dialog, static_cast<int>(i) + 1};
    return {};
}

}  // namespace

int16_t CountDITL(DialogPtr dialog)
{
    Dialog *found = find(dialog);
    return found ? static_cast<int16_t>(found->items.size()) : 0;
}

void GetDItem(DialogPtr dialog, int16_t number, int16_t *type, Handle *item, Rect *box)
{
    const Item *found = itemOf(dialog, number);
    if (!found)
        return;
    *type = found->type;
    *item = found->handle;
    *box = found->box;
}

void SetDItem(DialogPtr dialog, int16_t number, int16_t type, Handle item, const Rect *box)
{
    Item *found = itemOf(dialog, number);
    if (!found)
        return;
    found->type = type;
    found->handle = item;
    found->box = *box;
    if (find(dialog)->isCurrent(number))
        refreshCurrent(*find(dialog));
}

void HideDItem(DialogPtr dialog, int16_t number)
{
    Item *item = itemOf(dialog, number);
    if (!item || item->box.left >= farRight)
        return;
    Rect area = drawnArea(*item);
    if (ControlHandle control = controlOf(*item))
        HideControl(control);
    moveAcross(*find(dialog), number, hidingOffset);
    quickdraw::PortScope current(dialog);
    EraseRect(&area);
    InvalRect(&area);
}

void ShowDItem(DialogPtr dialog, int16_t number)
{
    Item *item = itemOf(dialog, number);
    if (!item || item->box.left <= farRight)
        return;
    moveAcross(*find(dialog), number, -hidingOffset);
    if (ControlHandle control = controlOf(*item)) {
        // A control made for a hidden item is still where that was hidden.
        Rect box = item->box;
        (**control).contrlRect = box;
        ShowControl(control);
    }
    quickdraw::PortScope current(dialog);
    Rect area = drawnArea(*item);
    InvalRect(&area);
}

int16_t FindDItem(DialogPtr dialog, Point where)
{
    Dialog *found = find(dialog);
    if (!found)
        return -1;
    for (size_t i = 0; i < found->items.size(); ++i)
        if (PtInRect(where, &found->items[i].box))
            return static_cast<int16_t>(i);
    return -1;
}

void GetIText(Handle item, Str255 text)
{
    Size length = item ? std::min<Size>(GetHandleSize(item), 255) : 0;
    text[0] = static_cast<unsigned char>(length);
    if (length > 0)
        BlockMove(*item, text + 1, length);
}

void SetIText(Handle item, ConstStr255Param text)
{
    if (!item)
        return;
    Str255 copy;
    std::memcpy(copy, text, text[0] + 1u);
    SetHandleSize(item, copy[0]);
    if (MemError() != noErr)
        return;
    BlockMove(copy + 1, *item, copy[0]);
    Place place = placeOfText(item);
    if (!place.dialog)
        return;
    if (place.dialog->isCurrent(place.number)) {
        (**place.dialog->record->textH).scroll = Point{0, 0};
        TECalText(place.dialog->record->textH);
    }
    drawItem(*place.dialog, place.number);
}
