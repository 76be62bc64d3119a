#include "menus/menu_view.h"

#include <algorithm>

#include "menus/menu_bytes.h"
#include "quickdraw/dimming.h"
#include "toolbox/host/text.h"

namespace toolbox::menus {
namespace {

constexpr int textIndent = 14;      // leaves room for the mark
constexpr int rightMargin = 14;
constexpr int baseline = 12;        // below a row's top
constexpr int menuBarHeight = 20;

void useMenuText(std::uint8_t face)
{
    TextFont(systemFont);
    TextSize(12);
    TextFace(face);
    TextMode(srcOr);
}

int textWidth(MenuHandle menu, int item)
{
    auto place = findItem(menu, item);
    Str255 text;
    setPascal(text, itemText(menu, *place));
    useMenuText(attribute(menu, *place, faceByte));
    return StringWidth(text);
}

int menuWidth(MenuHandle menu, int count)
{
    int width = 0;
    for (int item = 1; item <= count; ++item)
        if (!isDivider(menu, item))
            width = std::max(width, textWidth(menu, item));
    return width + textIndent + rightMargin;
}

// What a menu may cover on the screen that holds the point, or on the main
// screen when none does.
Rect roomAt(Point where)
{
    GDHandle found = GetMainDevice();
    for (GDHandle device = GetDeviceList(); device; device = GetNextDevice(device)) {
        Rect bounds = (**device).gdRect;
        if (PtInRect(where, &bounds))
            found = device;
    }
    Rect room = (**found).gdRect;
    if (found == GetMainDevice())
        room.top += menuBarHeight;
    // One pixel of frame all round, one of shadow right and below.
    return {static_cast<int16_t>(room.top + 1), static_cast<int16_t>(room.left + 1),
            static_cast<int16_t>(room.bottom - 2), static_cast<int16_t>(room.right - 2)};
}

// Moves a length along so that it lies between low and high; it begins at low
// when it does not fit.
int placed(int start, int length, int low, int high)
{
    return std::max(low, std::min(start, high - length));
}

}  // namespace

MenuView::MenuView(MenuHandle menu, Point where, int item) : menu_(menu), count_(itemCount(menu))
{
    item = std::clamp(item, 1, std::max(count_, 1));
    Rect room = roomAt(where);
    int fitting = (room.bottom - room.top) / rowHeight;
    int shown = std::clamp(count_, 1, std::max(fitting, 1));
    int width = std::min(menuWidth(menu, count_), room.right - room.left);
    int left = placed(where.h, width, room.left, room.right);
    int top = placed(where.v - (item - 1) * rowHeight, shown * rowHeight, room.top, room.bottom);
    SetRect(&rows_, static_cast<int16_t>(left), static_cast<int16_t>(top), static_cast<int16_t>(left + width),
            static_cast<int16_t>(top + shown * rowHeight));
    if (shown < count_)
        first_ = std::clamp(item - (where.v - top) / rowHeight, 1, count_ - shown + 1);
}

Rect MenuView::covered() const
{
    Rect all = rows_;
    InsetRect(&all, -1, -1);
    ++all.right;
    ++all.bottom;
    return all;
}

bool MenuView::shows(int item) const
{
    if (item < first_ || item >= first_ + rowsShown() || item > count_)
        return false;
    bool underArrow = (moreAbove() && item == first_) || (moreBelow() && item == first_ + rowsShown() - 1);
    return !underArrow;
}

Rect MenuView::rowOf(int item) const
{
    Rect row = rows_;
    row.top = static_cast<int16_t>(rows_.top + (item - first_) * rowHeight);
    row.bottom = static_cast<int16_t>(row.top + rowHeight);
    return row;
}

void MenuView::draw()
{
    PenNormal();
    ForeColor(blackColor);
    BackColor(whiteColor);
    Rect frame = rows_;
    InsetRect(&frame, -1, -1);
    EraseRect(&frame);
    FrameRect(&frame);
    MoveTo(static_cast<int16_t>(frame.left + 1), frame.bottom);
    LineTo(frame.right, frame.bottom);
    LineTo(frame.right, static_cast<int16_t>(frame.top + 1));
    for (int item = first_; item < first_ + rowsShown() && item <= count_; ++item)
        drawRow(item);
    if (moreAbove())
        drawArrow(rowOf(first_), -1);
    if (moreBelow())
        drawArrow(rowOf(first_ + rowsShown() - 1), 1);
    highlighted_ = 0;
}

void MenuView::drawRow(int item) const
{
    if (!shows(item))
        return;
    Rect row = rowOf(item);
    if (isDivider(menu_, item)) {
        PenPat(&qd.gray);
        MoveTo(row.left, static_cast<int16_t>(row.top + rowHeight / 2));
        LineTo(static_cast<int16_t>(row.right - 1), static_cast<int16_t>(row.top + rowHeight / 2));
        PenNormal();
        return;
    }
    auto place = findItem(menu_, item);
    auto base = static_cast<int16_t>(row.top + baseline);
    std::uint8_t mark = attribute(menu_, *place, markByte);
    useMenuText(0);
    MoveTo(static_cast<int16_t>(row.left + 2), base);
    if (mark)
        DrawChar(mark);
    Str255 text;
    setPascal(text, itemText(menu_, *place));
    useMenuText(attribute(menu_, *place, faceByte));
    MoveTo(static_cast<int16_t>(row.left + textIndent), base);
    DrawString(text);
    if (!canBeChosen(menu_, item))
        quickdraw::dim(row);
}

void MenuView::drawArrow(const Rect &row, int direction) const
{
    constexpr int height = 6;
    int tip = direction > 0 ? row.top + 11 : row.top + 5;
    for (int i = 0; i < height; ++i) {
        auto v = static_cast<int16_t>(tip - direction * i);
        MoveTo(static_cast<int16_t>(row.left + 2 + height - i), v);
        Line(static_cast<int16_t>(2 * i), 0);
    }
}

int MenuView::itemAt(Point where) const
{
    if (!PtInRect(where, &rows_))
        return 0;
    int item = first_ + (where.v - rows_.top) / rowHeight;
    return shows(item) && canBeChosen(menu_, item) ? item : 0;
}

void MenuView::highlight(int item)
{
    if (item == highlighted_)
        return;
    for (int changed : {highlighted_, item}) {
        if (changed == 0)
            continue;
        Rect row = rowOf(changed);
        InvertRect(&row);
    }
    highlighted_ = item;
}

bool MenuView::scrollAt(Point where)
{
    if (!PtInRect(where, &rows_))
        return false;
    int row = (where.v - rows_.top) / rowHeight;
    if (row == 0 && moreAbove())
        --first_;
    else if (row == rowsShown() - 1 && moreBelow())
        ++first_;
    else
        return false;
    draw();
    return true;
}

std::vector<Rect> MenuView::itemRects() const
{
    std::vector<Rect> rects;
    for (int item = 1; item <= count_; ++item)
        rects.push_back(shows(item) ? rowOf(item) : Rect{});
    return rects;
}

}  // namespace toolbox::menus
