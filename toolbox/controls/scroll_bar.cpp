#include "controls/scroll_bar.h"

#include <algorithm>

namespace toolbox::controls {
namespace {

constexpr int arrowSize = 16;

}  // namespace

Rect ScrollBar::slice(int from, int to) const
{
    Rect part = whole;
    if (vertical) {
        part.top = static_cast<int16_t>(whole.top + from);
        part.bottom = static_cast<int16_t>(whole.top + to);
    } else {
        part.left = static_cast<int16_t>(whole.left + from);
        part.right = static_cast<int16_t>(whole.left + to);
    }
    return part;
}

ScrollBar::ScrollBar(const ControlRecord &control) : whole(control.contrlRect)
{
    vertical = whole.bottom - whole.top > whole.right - whole.left;
    int all = length(whole);
    int arrow = std::min(arrowSize, all / 3);
    upArrow = slice(0, arrow);
    downArrow = slice(all - arrow, all);
    track = slice(arrow - 1, all - arrow + 1);
    thumb = Rect{};
    int range = control.contrlMax - control.contrlMin;
    int room = length(track) - arrowSize;
    if (range <= 0 || room < 0)
        return;
    int from = arrow - 1 + room * (control.contrlValue - control.contrlMin) / range;
    thumb = slice(from, from + arrowSize);
}

int16_t ScrollBar::partAt(Point where) const
{
    if (PtInRect(where, &upArrow))
        return inUpButton;
    if (PtInRect(where, &downArrow))
        return inDownButton;
    if (EmptyRect(&thumb) || !PtInRect(where, &track))
        return 0;
    if (PtInRect(where, &thumb))
        return inThumb;
    bool before = vertical ? where.v < thumb.top : where.h < thumb.left;
    return before ? inPageUp : inPageDown;
}

int16_t ScrollBar::valueAfter(const ControlRecord &control, int pixels) const
{
    int range = control.contrlMax - control.contrlMin;
    int room = std::max(1, length(track) - arrowSize);
    int from = room * (control.contrlValue - control.contrlMin) / std::max(1, range);
    int to = std::clamp(from + pixels, 0, room);
    return static_cast<int16_t>(control.contrlMin + (to * range + room / 2) / room);
}

}  // namespace toolbox::controls
