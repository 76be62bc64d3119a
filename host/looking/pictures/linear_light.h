// Colours as light: only light may be averaged to see what an eye sees from afar.
#pragma once

#include "looking/pictures/ink_colours.h"

namespace riders::looking {

// Shares of the light that white paper gives, 0 to 1.
struct Light {
    float red = 1, green = 1, blue = 1;
};

Light lightOf(Colour colour);
Colour colourOf(const Light &light);
// As bright as an eye sees it, 0 to 1.
double luminance(const Light &light);

}  // namespace riders::looking
