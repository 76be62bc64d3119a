#include "menus/menu_view.h"

#include <algorithm>

#include "menus/menu_bytes.h"
#include "quickdraw/dimming.h"
#include "toolbox/host/menu_bar.h"
#include "toolbox/host/text.h"

namespace toolbox::menus {

namespace {

constexpr int textIndent = 14;      // leaves room for the mark
constexpr int rightMargin = 14;
constexpr int keyGap = 18;          // between the longest text and the keys
constexpr int baseline = 12;        // below a row's top

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

// How an item's key is shown; empty without one. Bytes below a space are not
// keys.
std::string keyText(MenuHandle menu, int item)
{
    std::uint8_t key = attribute(menu, *findItem(menu, item), keyByte);
    return key <= ' ' ? std::string() : "Ctrl+" + std::string(1, static_cast<char>(key));
}

int keyWidth(MenuHandle menu, int item)
{
    Str255 text;
    setPascal(text, keyText(menu, item));
    useMenuText(0);
    return StringWidth(text);
}

int menuWidth(MenuHandle menu, int count)
{
    int width = 0, keys = 0;
    for (int item = 1; item <= count; ++item) {
        if (isDivider(menu, item))
            continue;
        width = std::max(width, textWidth(menu, item));
        keys = std::max(keys, keyWidth(menu, item));
    }
    return width + textIndent + rightMargin + (keys ? keyGap + keys : 0);
}

// What a menu may cover on the display that contains the point, or on the main
// display when none does.
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
    // One pixel of frame on every side, one of shadow right and below.
    return {static_cast<int16_t>(room.top + 1), static_cast<int16_t>(room.left + 1),
            static_cast<int16_t>(room.bottom - 2), static_cast<int16_t>(room.right - 2)};
}

// The start nearest to this one with which the length lies between low and high;
// low when it does not fit.
int placed(int start, int length, int low, int high)
{
    return std::max(low, std::min(start, high - length));
}

}  // namespace

MenuView::MenuView(MenuHandle menu, Point where, int item) : MenuView(menu, roomAt(where), where, item)
{
}

// The line under the bar is the upper side of the frame.
MenuView MenuView::below(MenuHandle menu, int h)
{
    Point hanging{static_cast<int16_t>(qd.screenBits.bounds.top + menuBarHeight), static_cast<int16_t>(h)};
    Rect room = roomAt(hanging);
    room.top = hanging.v;
    return {menu, room, hanging, 1};
}

MenuView::MenuView(MenuHandle menu, const Rect &room, Point where, int item) : menu_(menu), count_(itemCount(menu))
{
    item = std::clamp(item, 1, std::max(count_, 1));
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

void MenuView::drawDivider(const Rect &row) const
{
    PenPat(&qd.gray);
    MoveTo(row.left, static_cast<int16_t>(row.top + rowHeight / 2));
    LineTo(static_cast<int16_t>(row.right - 1), static_cast<int16_t>(row.top + rowHeight / 2));
    PenNormal();
}

void MenuView::drawRow(int item) const
{
    if (!shows(item))
        return;
    Rect row = rowOf(item);
    if (isDivider(menu_, item))
        return drawDivider(row);
    auto place = findItem(menu_, item);
    auto base = static_cast<int16_t>(row.top + baseline);
    std::uint8_t mark = attribute(menu_, *place, markByte);
    useMenuText(0);
    MoveTo(static_cast<int16_t>(row.left + 2), base);
    if (mark)
        DrawChar(mark);
    Str255 text;
    setPascal(text, keyText(menu_, item));
    MoveTo(static_cast<int16_t>(row.right - rightMargin - StringWidth(text)), base);
    DrawString(text);
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

int MenuView::scrollDirection(Point where) const
{
    if (!holds(where))
        return 0;
    int row = (where.v - rows_.top) / rowHeight;
    if (row == 0 && moreAbove())
        return -1;
    return row == rowsShown() - 1 && moreBelow() ? 1 : 0;
}

bool MenuView::scrollAt(Point where)
{
    int direction = scrollDirection(where);
    if (direction == 0)
        return false;
    first_ += direction;
    draw();
    return true;
}

void MenuView::reveal(int item)
{
    int before = first_;
    while (!shows(item))
        first_ += item <= first_ ? -1 : 1;
    if (first_ != before)
        draw();
}

void MenuView::step(int direction)
{
    int item = highlighted_;
    for (int tried = 0; tried < count_; ++tried) {
        item += direction;
        if (item < 1 || item > count_)
            item = direction > 0 ? 1 : count_;
        if (canBeChosen(menu_, item)) {
            reveal(item);
            return highlight(item);
        }
    }
}

std::vector<Rect> MenuView::itemRects() const
{
    std::vector<Rect> rects;
    for (int item = 1; item <= count_; ++item)
        rects.push_back(shows(item) ? rowOf(item) : Rect{});
    return rects;
}

}  // namespace toolbox::menus
