// A part of a sheet.
#pragma once

namespace riders::plates {

// A rectangle in inches from the upper left corner of the sheet.
struct Place {
    double left = 0, top = 0, width = 0, height = 0;
    bool empty() const { return width <= 0 || height <= 0; }
};

}  // namespace riders::plates
