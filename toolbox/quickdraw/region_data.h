// What a region's block holds. Private to QuickDraw.
//
// A Region record first. For an empty or rectangular region that is all, and
// rgnSize is 10. For any other the rectangles it is made of follow, as Rect
// records: disjoint, top to bottom and left to right, touching rectangles of
// one band joined. rgnSize is the block's size in bytes, or 32766 when that is
// more; the block's own size says how many rectangles there are.
#pragma once

#include "quickdraw/area.h"
#include "toolbox/quickdraw.h"

namespace toolbox::quickdraw {

// Nil is an empty region.
Area areaOf(RgnHandle region);
// Puts the area into the region, limited to the range of coordinates. Where the
// heap has no room for its rectangles, the region is left as it was and MemError
// is set.
void storeArea(const Area &area, RgnHandle region);

}  // namespace toolbox::quickdraw
