// A picture in memory.
#pragma once

#include <vector>

#include "looking/pictures/ink_colours.h"

namespace riders::looking {

struct Picture {
    int width = 0, height = 0;
    std::vector<Colour> pixels;  // rows from the top
};

}  // namespace riders::looking
