#include "quickdraw/drawing.h"

#include <cstdlib>

#include "quickdraw/displays.h"
#include "quickdraw/region_data.h"

namespace toolbox::quickdraw {

Area toGlobal(const GrafPort &port, const Area &local)
{
    return local.movedBy(port.portBits.bounds.left, port.portBits.bounds.top);
}

Area visibleArea(const GrafPort &port)
{
    return toGlobal(port, Area(port.portRect) & areaOf(port.visRgn) & areaOf(port.clipRgn));
}

void paintShape(const GrafPort &port, const Area &local, const Ink &ink)
{
    fillOnDisplays(toGlobal(port, local) & visibleArea(port), ink);
}

void paintShape(const GrafPort &port, const SmoothShape &shape, const Ink &ink)
{
    const Area visible = visibleArea(port);
    for (Surface &surface : surfaces()) {
        const Area shown = surface.device(visible);
        if (shown.empty())
            continue;
        const int left = surface.deviceH(port.portBits.bounds.left),
                  top = surface.deviceV(port.portBits.bounds.top);
        const Area within = shown.movedBy(-left, -top);
        surface.fill(shape(surface.scale(), within.extent()).movedBy(left, top) & shown, ink);
    }
}

static bool penDraws(const GrafPort &port)
{
    return port.pnSize.h > 0 && port.pnSize.v > 0 && port.pnVis >= 0;
}

void paintWithPen(const GrafPort &port, const Area &local)
{
    if (penDraws(port))
        paintShape(port, local, Ink::pen(port));
}

void paintWithPen(const GrafPort &port, const SmoothShape &shape)
{
    if (penDraws(port))
        paintShape(port, shape, Ink::pen(port));
}

namespace {

int floorDivided(int64_t dividend, int64_t divisor)
{
    int64_t quotient = dividend / divisor;
    return static_cast<int>(dividend % divisor < 0 ? quotient - 1 : quotient);
}

// Calls run(first, last, across) for each stretch of steps along the longer
// direction that share a coordinate across it; half steps round up.
template <typename Run>
void eachRun(int from, int to, int across, int acrossEnd, Run run)
{
    const int64_t length = to - from, rise = acrossEnd - across;
    auto at = [&](int step) {
        return length == 0
                   ? across
                   : across + floorDivided(int64_t{2} * (step - from) * rise + length, 2 * length);
    };
    int first = from;
    for (int step = from; step <= to; ++step)
        if (step == to || at(step + 1) != at(step)) {
            run(first, step, at(step));
            first = step + 1;
        }
}

}  // namespace

Area lineArea(Point from, Point to, Point penSize)
{
    if (penSize.h <= 0 || penSize.v <= 0)
        return {};
    const bool wide = std::abs(to.h - from.h) >= std::abs(to.v - from.v);
    if (wide ? to.h < from.h : to.v < from.v)
        std::swap(from, to);
    std::vector<Box> boxes;
    if (wide)
        eachRun(from.h, to.h, from.v, to.v, [&](int first, int last, int v) {
            boxes.push_back({first, v, last + penSize.h, v + penSize.v});
        });
    else
        eachRun(from.v, to.v, from.h, to.h, [&](int first, int last, int h) {
            boxes.push_back({h, first, h + penSize.h, last + penSize.v});
        });
    return Area(boxes);
}

}  // namespace toolbox::quickdraw
