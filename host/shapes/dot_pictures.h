// Pictures of the dots of a shape.
#pragma once

#include <string>

#include "shapes/growth.h"

namespace riders::shapes {

struct DotPicture {
    int columns, rows;           // of cells
    int cellPixels;              // a cell's side
    double leftTint, rightTint;  // 0 to 1: at the left edge, and at the right one
};

// The dots at 0 degrees with a cell's middle in the middle of each square, y upwards, black ink on white, as a
// PNG. Throws std::bad_alloc.
std::string dotPicture(const Growth &growth, const DotPicture &picture);

// The same for use as an address in HTML.
std::string asAddress(const std::string &png);

}  // namespace riders::shapes
