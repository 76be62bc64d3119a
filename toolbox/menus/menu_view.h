// A menu as it lies on the display: where its rows are and how they look.
// Private to the Menu Manager.
#pragma once

#include <vector>

#include "toolbox/menus.h"
#include "toolbox/quickdraw.h"

namespace toolbox::menus {

// Draws into the current port, which is in global coordinates.
class MenuView {
public:
    // Places the menu with the item's top left at the point, or as near to it as
    // the display that contains the point allows.
    MenuView(MenuHandle menu, Point where, int item);
    // Hangs it from the menu bar, its rows' left edge at h.
    static MenuView below(MenuHandle menu, int h);

    // All that is drawn on, frame and shadow included.
    Rect covered() const;
    void draw();
    // The item at the point if it can be chosen, else 0.
    int itemAt(Point where) const;
    // Inverts this item and no other; none for 0.
    void highlight(int item);
    int highlighted() const { return highlighted_; }
    bool holds(Point where) const { return PtInRect(where, &rows_); }
    // Whether the point is over a row that shows there is more.
    bool scrollsAt(Point where) const { return scrollDirection(where) != 0; }
    // Scrolls by one row if the point is over such a row. True when the rows
    // moved.
    bool scrollAt(Point where);
    // Highlights the next item before (-1) or after (1) the highlighted one that
    // can be chosen, continuing at the other end of the menu; scrolls to it.
    void step(int direction);
    // Global rectangle of each item, empty for one that is not visible.
    std::vector<Rect> itemRects() const;

private:
    MenuView(MenuHandle menu, const Rect &room, Point where, int item);
    int scrollDirection(Point where) const;
    void reveal(int item);
    int rowsShown() const { return (rows_.bottom - rows_.top) / rowHeight; }
    bool moreAbove() const { return first_ > 1; }
    bool moreBelow() const { return first_ + rowsShown() - 1 < count_; }
    bool shows(int item) const;
    Rect rowOf(int item) const;
    void drawRow(int item) const;
    void drawDivider(const Rect &row) const;
    void drawArrow(const Rect &row, int direction) const;

    static constexpr int rowHeight = 16;

    MenuHandle menu_;
    int count_;
    Rect rows_{};
    int first_ = 1;        // the item in the first row
    int highlighted_ = 0;
};

}  // namespace toolbox::menus
