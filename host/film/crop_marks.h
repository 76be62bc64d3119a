// Crop marks and register marks beside a page.
#pragma once

#include "film/drawing/drawing.h"
#include "film/page_boxes.h"
#include "screening/tile.h"

namespace riders::film {

// Two lines at each corner of the trim, which they would meet; they begin where the bleed ends.
void drawCropMarks(Drawing &drawing, const PageBoxes &boxes, const screening::Resolution &resolution);

// A cross in a circle beside the middle of each side, outside the page.
void drawRegisterMarks(Drawing &drawing, const PageBoxes &boxes, const screening::Resolution &resolution);

}  // namespace riders::film
