#include "dialogs/edit_field.h"

#include "memory/locked.h"
#include "quickdraw/port_scope.h"
#include "textedit/lines.h"
#include "toolbox/memory.h"

namespace toolbox::dialogs {
namespace {

constexpr int16_t frameGap = 3;   // between an edit item's box and its frame

bool haveRecord(Dialog &dialog)
{
    DialogPeek record = dialog.record;
    if (record->textH)
        return true;
    quickdraw::PortScope current(dialog.pointer());
    Rect nowhere{};
    record->textH = TENew(&nowhere, &nowhere);
    if (!record->textH)
        return false;
    // Its own empty text is not needed: it edits those of the items.
    DisposeHandle((**record->textH).hText);
    (**record->textH).hText = nullptr;
    return true;
}

void leave(Dialog &dialog)
{
    DialogPeek record = dialog.record;
    if (record->editField < 0)
        return;
    if ((**record->textH).active)
        TEDeactivate(record->textH);
    record->editField = -1;
}

void attach(Dialog &dialog, const Item &item)
{
    DialogPeek record = dialog.record;
    quickdraw::DrawingScope scope(dialog.pointer());
    bool single = isSingleLine(item.box);
    {
        Locked text(record->textH);
        text->hText = item.handle;
        text->destRect = text->viewRect = item.box;
        text->crOnly = single;
        text->scroll = Point{0, 0};
        text->selStart = text->selEnd = 0;
    }
    TECalText(record->textH);
}

}  // namespace

bool isSingleLine(const Rect &box)
{
    return box.bottom - box.top < 2 * textedit::lineHeight();
}

bool makeCurrent(Dialog &dialog, int number)
{
    Item *item = dialog.item(number);
    if (!item || item->kind() != editText || !item->handle)
        return false;
    if (dialog.isCurrent(number))
        return true;
    if (!haveRecord(dialog))
        return false;
    leave(dialog);
    attach(dialog, *item);
    dialog.record->editField = static_cast<int16_t>(number - 1);
    if (dialog.record->window.hilited && dialog.record->window.visible)
        TEActivate(dialog.record->textH);
    return true;
}

void tabTo(Dialog &dialog, int direction)
{
    int count = static_cast<int>(dialog.items.size());
    int at = dialog.record->editField + 1;
    for (int tried = 0; tried < count; ++tried) {
        at = (at - 1 + direction + count) % count + 1;
        if (dialog.item(at)->kind() == editText) {
            SelIText(dialog.pointer(), static_cast<int16_t>(at), 0, 32767);
            return;
        }
    }
}

void refreshCurrent(Dialog &dialog)
{
    DialogPeek record = dialog.record;
    if (!record->textH || record->editField < 0)
        return;
    const Item &item = *dialog.item(record->editField + 1);
    {
        Locked text(record->textH);
        text->destRect = text->viewRect = item.box;
        if (item.kind() == editText)
            text->hText = item.handle;
    }
    TECalText(record->textH);
}

void releaseText(Dialog &dialog)
{
    TEHandle text = dialog.record->textH;
    if (!text)
        return;
    (**text).hText = nullptr;
    TEDispose(text);
    dialog.record->textH = nullptr;
}

void drawEditItem(Dialog &dialog, int number)
{
    const Item &item = *dialog.item(number);
    quickdraw::DrawingScope scope(dialog.pointer());
    Rect frame = item.box;
    InsetRect(&frame, -frameGap, -frameGap);
    FrameRect(&frame);
    InsetRect(&frame, 1, 1);
    EraseRect(&frame);
    if (dialog.isCurrent(number)) {
        TEUpdate(&item.box, dialog.record->textH);
        return;
    }
    std::string text(*item.handle, static_cast<size_t>(GetHandleSize(item.handle)));
    textedit::drawLines(text, item.box, 0, !isSingleLine(item.box));
}

}  // namespace toolbox::dialogs

using namespace toolbox::dialogs;

void SelIText(DialogPtr dialog, int16_t number, int16_t start, int16_t end)
{
    Dialog *found = find(dialog);
    if (!found || !makeCurrent(*found, number))
        return;
    TESetSelect(start, end, found->record->textH);
}
