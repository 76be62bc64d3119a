// A page's trim and bleed in its pixels.
#pragma once

#include "film/drawing/drawing.h"
#include "plates/tones/tones.h"
#include "screening/tile.h"

namespace riders::film {

struct PageBoxes {
    PixelBox page, bleed, trim;  // from the page's first pixel; each lies within the one before it
};

// The trim is all of the page where the job says none, or one that does not lie on the page; the bleed is the trim
// where the job says none.
PageBoxes pageBoxes(const plates::TonePage &page, const screening::Resolution &resolution);

}  // namespace riders::film
