// The polygon that is being recorded. Private to QuickDraw.
#pragma once

#include "toolbox/quickdraw.h"

namespace toolbox::quickdraw {

bool polygonOpen();
// Adds a line, in local coordinates, to it. Lines beyond what a polygon can hold
// are left out.
void addToPolygon(Point from, Point to);
// Ends recording; the polygon's block still belongs to the caller.
void forgetPolygon();

}  // namespace toolbox::quickdraw
