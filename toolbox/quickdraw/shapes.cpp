#include "toolbox/quickdraw.h"

#include <algorithm>

#include "quickdraw/current_port.h"
#include "quickdraw/displays.h"
#include "quickdraw/drawing.h"
#include "quickdraw/polygons.h"
#include "quickdraw/region_data.h"
#include "toolbox/host/trace.h"

using namespace toolbox;
using namespace toolbox::quickdraw;

static void traceRect(const char *call, const Rect &r)
{
    trace::drawing("%s %d,%d,%d,%d", call, r.left, r.top, r.right, r.bottom);
}

static Rect withinPen(const Rect &r, Point penSize)
{
    Rect inner = r;
    InsetRect(&inner, penSize.h, penSize.v);
    return inner;
}

void FrameRect(const Rect *r)
{
    const GrafPort &port = currentPort();
    traceRect("frameRect", *r);
    paintWithPen(port, Area(*r) - Area(withinPen(*r, port.pnSize)));
}

void PaintRect(const Rect *r)
{
    traceRect("paintRect", *r);
    paintWithPen(currentPort(), Area(*r));
}

void EraseRect(const Rect *r)
{
    const GrafPort &port = currentPort();
    traceRect("eraseRect", *r);
    paintShape(port, Area(*r), Ink::background(port));
}

void InvertRect(const Rect *r)
{
    const GrafPort &port = currentPort();
    traceRect("invertRect", *r);
    paintShape(port, Area(*r), Ink::inverting(port));
}

void FillRect(const Rect *r, const Pattern *pattern)
{
    const GrafPort &port = currentPort();
    traceRect("fillRect", *r);
    paintShape(port, Area(*r), Ink::of(port, *pattern, patCopy));
}

// Whether a pixel of the corner's square belongs to the oval, which it does when
// its centre lies in it. Column and row count from the square's outer corner.
static bool inCorner(int column, int row, double ovalWidth, double ovalHeight)
{
    const double h = (ovalWidth - 2 * column - 1) * ovalHeight, v = (ovalHeight - 2 * row - 1) * ovalWidth;
    return h * h + v * v <= ovalWidth * ovalWidth * ovalHeight * ovalHeight;
}

static Area roundedBox(const Box &box, int ovalWidth, int ovalHeight)
{
    ovalWidth = std::clamp(ovalWidth, 0, std::max(box.x2 - box.x1, 0));
    ovalHeight = std::clamp(ovalHeight, 0, std::max(box.y2 - box.y1, 0));
    const int rows = ovalWidth > 0 ? (ovalHeight + 1) / 2 : 0;
    std::vector<Box> boxes{{box.x1, box.y1 + rows, box.x2, box.y2 - rows}};
    int inset = ovalWidth / 2;
    for (int row = 0; row < rows; ++row) {
        while (inset > 0 && inCorner(inset - 1, row, ovalWidth, ovalHeight))
            --inset;
        boxes.push_back({box.x1 + inset, box.y1 + row, box.x2 - inset, box.y1 + row + 1});
        boxes.push_back({box.x1 + inset, box.y2 - row - 1, box.x2 - inset, box.y2 - row});
    }
    return Area(boxes);
}

static SmoothShape roundRect(const Rect &r, int ovalWidth, int ovalHeight)
{
    return [=](int scale, const Box &) {
        return roundedBox({r.left * scale, r.top * scale, r.right * scale, r.bottom * scale}, ovalWidth * scale,
                          ovalHeight * scale);
    };
}

static SmoothShape roundFrame(const Rect &r, int ovalWidth, int ovalHeight, Point pen)
{
    const SmoothShape outer = roundRect(r, ovalWidth, ovalHeight);
    const SmoothShape inner = roundRect(withinPen(r, pen), ovalWidth - 2 * pen.h, ovalHeight - 2 * pen.v);
    return [=](int scale, const Box &within) { return outer(scale, within) - inner(scale, within); };
}

static void traceRoundRect(const char *call, const Rect &r, int ovalWidth, int ovalHeight)
{
    trace::drawing("%s %d,%d,%d,%d %d,%d", call, r.left, r.top, r.right, r.bottom, ovalWidth, ovalHeight);
}

void FrameRoundRect(const Rect *r, int16_t ovalWidth, int16_t ovalHeight)
{
    const GrafPort &port = currentPort();
    const Point pen = port.pnSize;
    trace::drawing("roundRect %d,%d,%d,%d %d,%d pen %d,%d", r->left, r->top, r->right, r->bottom, ovalWidth,
                   ovalHeight, pen.h, pen.v);
    paintWithPen(port, roundFrame(*r, ovalWidth, ovalHeight, pen));
}

void PaintRoundRect(const Rect *r, int16_t ovalWidth, int16_t ovalHeight)
{
    traceRoundRect("paintRoundRect", *r, ovalWidth, ovalHeight);
    paintWithPen(currentPort(), roundRect(*r, ovalWidth, ovalHeight));
}

void EraseRoundRect(const Rect *r, int16_t ovalWidth, int16_t ovalHeight)
{
    const GrafPort &port = currentPort();
    traceRoundRect("eraseRoundRect", *r, ovalWidth, ovalHeight);
    paintShape(port, roundRect(*r, ovalWidth, ovalHeight), Ink::background(port));
}

void InvertRoundRect(const Rect *r, int16_t ovalWidth, int16_t ovalHeight)
{
    const GrafPort &port = currentPort();
    traceRoundRect("invertRoundRect", *r, ovalWidth, ovalHeight);
    paintShape(port, roundRect(*r, ovalWidth, ovalHeight), Ink::inverting(port));
}

void LineTo(int16_t h, int16_t v)
{
    GrafPort &port = currentPort();
    const Point from = port.pnLoc, to{v, h};
    port.pnLoc = to;
    if (polygonOpen()) {
        addToPolygon(from, to);
        return;
    }
    trace::drawing("line %d,%d to %d,%d", from.h, from.v, to.h, to.v);
    paintWithPen(port, lineArea(from, to, port.pnSize));
}

void Line(int16_t dh, int16_t dv)
{
    const Point from = currentPort().pnLoc;
    LineTo(static_cast<int16_t>(from.h + dh), static_cast<int16_t>(from.v + dv));
}

void EraseRgn(RgnHandle region)
{
    const GrafPort &port = currentPort();
    const Area area = areaOf(region);
    traceRect("eraseRgn", area.bounds());
    paintShape(port, area, Ink::background(port));
}

void PaintRgn(RgnHandle region)
{
    const Area area = areaOf(region);
    traceRect("paintRgn", area.bounds());
    paintWithPen(currentPort(), area);
}

void ScrollRect(const Rect *r, int16_t dh, int16_t dv, RgnHandle update)
{
    const GrafPort &port = currentPort();
    trace::drawing("scrollRect %d,%d,%d,%d by %d,%d", r->left, r->top, r->right, r->bottom, dh, dv);
    const Area moving = toGlobal(port, Area(*r)) & visibleArea(port);
    const Area vacated = scrollOnDisplays(moving, dh, dv);
    fillOnDisplays(vacated, Ink::background(port));
    storeArea(vacated.movedBy(-port.portBits.bounds.left, -port.portBits.bounds.top), update);
}
