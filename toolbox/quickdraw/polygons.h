// The polygon that is being recorded. Private to QuickDraw.
#pragma once

#include "toolbox/quickdraw.h"

namespace toolbox::quickdraw {

bool polygonOpen();
// Takes a line, local, into it. Lines beyond what a polygon can hold are left
// out.
void addToPolygon(Point from, Point to);
// Ends recording; the polygon's block stays the caller's.
void forgetPolygon();

}  // namespace toolbox::quickdraw
