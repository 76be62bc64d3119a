// A picture in memory.
#pragma once

#include <vector>

#include "proof/looking/ink_colours.h"

namespace riders::proof {

struct Picture {
    int width = 0, height = 0;
    std::vector<Colour> pixels;  // rows from the top
};

}  // namespace riders::proof
