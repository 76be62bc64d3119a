#include "app/focus.h"

#include <algorithm>

#include "app/dialog_items.h"
#include "toolbox/keys.h"

namespace riders::app {
namespace {

Rect frameOf(DialogPtr dialog, int16_t item)
{
    Rect frame = itemBox(dialog, item);
    InsetRect(&frame, -3, -3);
    return frame;
}

}  // namespace

bool Focus::key(DialogPtr dialog, const EventRecord &event, int16_t *itemHit)
{
    if ((event.what != keyDown && event.what != autoKey) || event.modifiers & cmdKey)
        return false;
    const auto character = static_cast<int>(event.message & charCodeMask);
    *itemHit = 0;
    if (character == ' ' && item_ != 0 && isButton(dialog, item_)) {
        if (event.what == keyDown && pressByKey(dialog, item_))
            *itemHit = item_;
        return true;
    }
    if (character != toolbox::key::tab)
        return false;
    const auto count = static_cast<int>(items_.size());
    const auto found = std::find(items_.begin(), items_.end(), item_);
    const bool back = event.modifiers & shiftKey;
    int at = found == items_.end() ? (back ? count : -1) : static_cast<int>(found - items_.begin());
    for (int tried = 0; tried < count; ++tried) {
        at = (at + (back ? -1 : 1) + count) % count;
        if (canBePressed(dialog, items_[static_cast<std::size_t>(at)])) {
            moveTo(dialog, items_[static_cast<std::size_t>(at)]);
            break;
        }
    }
    return true;
}

void Focus::moveTo(DialogPtr dialog, int16_t item)
{
    const int16_t before = item_;
    item_ = item;
    const PortOf port(dialog);
    if (before != 0) {
        const Rect left = frameOf(dialog, before);
        EraseRect(&left);
        InvalRect(&left);
    }
    drawFocus(dialog, item_, true);
}

void Focus::draw(DialogPtr dialog) const
{
    if (item_ == 0 || !reinterpret_cast<WindowPeek>(dialog)->visible)
        return;
    drawFocus(dialog, item_, true);
}

void drawFocus(DialogPtr dialog, int16_t item, bool focus)
{
    const PortOf port(dialog);
    const Rect frame = frameOf(dialog, item);
    PenNormal();
    PenPat(focus ? &qd.gray : &qd.white);
    PenSize(2, 2);
    FrameRect(&frame);
    PenNormal();
}

}  // namespace riders::app
