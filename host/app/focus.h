// Which item of one of the program's windows the keyboard acts on.
#pragma once

#include <vector>

#include "toolbox/dialogs.h"

namespace riders::app {

class Focus {
public:
    // The items in the order in which Tab goes from one to the next. None has the focus until Tab is pressed.
    explicit Focus(std::vector<int16_t> items) : items_(std::move(items)) {}

    int16_t item() const { return item_; }
    // Tab and Shift-Tab go on, Space presses a button. True when the key was one of these; *itemHit is then the
    // item that was pressed, or 0.
    bool key(DialogPtr dialog, const EventRecord &event, int16_t *itemHit);
    // Draws the frame around the item that has it, to be called when the window is drawn.
    void draw(DialogPtr dialog) const;

private:
    void moveTo(DialogPtr dialog, int16_t item);

    std::vector<int16_t> items_;
    int16_t item_ = 0;
};

// The frame around an item that has the focus, or the place where it was.
void drawFocus(DialogPtr dialog, int16_t item, bool focus);

}  // namespace riders::app
