#include "dialogs/drawing.h"

#include <algorithm>

#include "dialogs/edit_field.h"
#include "dialogs/icons.h"
#include "dialogs/parameters.h"
#include "quickdraw/port_scope.h"
#include "quickdraw/region_data.h"
#include "toolbox/memory.h"
#include "toolbox/resources.h"

namespace toolbox::dialogs {
namespace {

constexpr Rect alertIconBox{10, 20, 42, 52};

void drawStaticText(const Item &item)
{
    if (!item.handle)
        return;
    std::string text(*item.handle, static_cast<size_t>(GetHandleSize(item.handle)));
    text = substituted(text);
    TETextBox(text.data(), static_cast<int32_t>(text.size()), &item.box, 0);
}

// Stretched to the item.
void drawPicture(const Item &item)
{
    if (item.handle && !*item.handle)
        LoadResource(item.handle);
    DrawPicture(reinterpret_cast<PicHandle>(item.handle), &item.box);
}

void drawUserItem(Dialog &dialog, int number)
{
    Handle procedure = dialog.item(number)->handle;
    if (!procedure)
        return;
    quickdraw::PortScope current(dialog.pointer());
    reinterpret_cast<UserItemProcPtr>(procedure)(dialog.pointer(), static_cast<int16_t>(number));
}

// The corners grow with the button's height.
void outlineDefaultItem(Dialog &dialog)
{
    const Item *item = dialog.item(dialog.record->aDefItem);
    if (!item || item->kind() != ctrlItem)
        return;
    quickdraw::DrawingScope scope(dialog.pointer());
    Rect frame = item->box;
    int16_t corner = static_cast<int16_t>(std::max(16, (frame.bottom - frame.top) / 2));
    InsetRect(&frame, -4, -4);
    PenSize(3, 3);
    FrameRoundRect(&frame, corner, corner);
}

}  // namespace

void drawItem(Dialog &dialog, int number)
{
    const Item item = *dialog.item(number);
    if (item.kind() == userItem)
        return drawUserItem(dialog, number);
    if (item.isControl()) {
        if (item.handle)
            Draw1Control(reinterpret_cast<ControlHandle>(item.handle));
        return;
    }
    quickdraw::DrawingScope scope(dialog.pointer());
    switch (item.kind()) {
    case statText: return drawStaticText(item);
    case editText: return drawEditItem(dialog, number);
    case iconItem: return drawIcon(item.handle, item.resource, item.box);
    case picItem: return drawPicture(item);
    }
}

void drawAll(Dialog &dialog)
{
    for (int number = 1; number <= static_cast<int>(dialog.items.size()); ++number)
        drawItem(dialog, number);
    if (!dialog.alert)
        return;
    outlineDefaultItem(dialog);
    if (dialog.alertIcon >= 0) {
        quickdraw::DrawingScope scope(dialog.pointer());
        drawIcon(GetResource('ICON', dialog.alertIcon), dialog.alertIcon, alertIconBox);
    }
}

}  // namespace toolbox::dialogs

using namespace toolbox;

void DrawDialog(DialogPtr dialog)
{
    if (dialogs::Dialog *found = dialogs::find(dialog))
        dialogs::drawAll(*found);
}

void UpdtDialog(DialogPtr dialog, RgnHandle update)
{
    quickdraw::Area visible = quickdraw::areaOf(dialog->visRgn);
    quickdraw::storeArea(visible & quickdraw::areaOf(update), dialog->visRgn);
    DrawDialog(dialog);
    quickdraw::storeArea(visible, dialog->visRgn);
}
