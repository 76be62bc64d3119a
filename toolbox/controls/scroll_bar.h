// Where the parts of a scroll bar lie. Private to the Control Manager.
#pragma once

#include "toolbox/controls.h"

namespace toolbox::controls {

struct ScrollBar {
    explicit ScrollBar(const ControlRecord &control);

    bool vertical;
    Rect whole, upArrow, downArrow, track, thumb;   // thumb empty: nothing to scroll
    int16_t partAt(Point where) const;
    // The value once the thumb has been moved by that many pixels.
    int16_t valueAfter(const ControlRecord &control, int pixels) const;

private:
    int length(const Rect &r) const { return vertical ? r.bottom - r.top : r.right - r.left; }
    Rect slice(int from, int to) const;
};

}  // namespace toolbox::controls
