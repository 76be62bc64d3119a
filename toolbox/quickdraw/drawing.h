// From a port's local shapes to pixels. Private to QuickDraw.
#pragma once

#include <functional>

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

// A shape with curves or slanted sides, worked out for each display so that it
// is as smooth as the display allows: local coordinates times the scale. What
// lies outside `within` will not be seen and may be left out.
using SmoothShape = std::function<Area(int scale, const Box &within)>;
void paintShape(const GrafPort &port, const SmoothShape &shape, const Ink &ink);
void paintWithPen(const GrafPort &port, const SmoothShape &shape);

// The pixels under a pen of that size moved from one point to the other, both
// included. The same whichever end comes first.
Area lineArea(Point from, Point to, Point penSize);

}  // namespace toolbox::quickdraw
