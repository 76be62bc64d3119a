// From a port's local shapes to pixels. Private to QuickDraw.
#pragma once

#include "quickdraw/area.h"
#include "quickdraw/ink.h"

namespace toolbox::quickdraw {

// Where drawing in the port shows: portRect, visRgn and clipRgn together, in
// global coordinates.
Area visibleArea(const GrafPort &port);
// The same shape in global coordinates.
Area toGlobal(const GrafPort &port, const Area &local);

// Fills the visible part of a local shape.
void paintShape(const GrafPort &port, const Area &local, const Ink &ink);
// Draws with the pen, unless it is too small to draw.
void paintWithPen(const GrafPort &port, const Area &local);
// The pixels under a pen of that size led from one point to the other, both
// included. The same whichever end comes first.
Area lineArea(Point from, Point to, Point penSize);

}  // namespace toolbox::quickdraw
