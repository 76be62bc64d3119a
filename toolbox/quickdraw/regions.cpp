#include "toolbox/quickdraw.h"

#include <algorithm>
#include <cstring>

#include "quickdraw/region_data.h"
#include "toolbox/memory.h"

namespace toolbox::quickdraw {

static_assert(sizeof(Region) == 10 && sizeof(Rect) == 8);

Area areaOf(RgnHandle region)
{
    if (!region || !*region)
        return {};
    if ((*region)->rgnSize <= static_cast<int16_t>(sizeof(Region)))
        return Area((*region)->rgnBBox);
    std::size_t bytes = GetHandleSize(reinterpret_cast<Handle>(region)) - sizeof(Region);
    std::vector<Rect> rects(bytes / sizeof(Rect));
    std::memcpy(rects.data(), *region + 1, rects.size() * sizeof(Rect));
    std::vector<Box> boxes;
    boxes.reserve(rects.size());
    for (const Rect &r : rects)
        boxes.push_back({r.left, r.top, r.right, r.bottom});
    return Area(boxes);
}

void storeArea(const Area &wanted, RgnHandle region)
{
    if (!region)
        return;
    const Area area = wanted & Area(Rect{-32768, -32768, 32767, 32767});
    std::vector<Rect> rects;
    if (area.boxes().size() > 1)
        for (const Box &box : area.boxes())
            rects.push_back({static_cast<int16_t>(box.y1), static_cast<int16_t>(box.x1),
                             static_cast<int16_t>(box.y2), static_cast<int16_t>(box.x2)});
    const std::size_t bytes = sizeof(Region) + rects.size() * sizeof(Rect);
    Handle block = reinterpret_cast<Handle>(region);
    if (GetHandleSize(block) != static_cast<Size>(bytes)) {
        SetHandleSize(block, static_cast<Size>(bytes));
        if (MemError() != noErr)
            return;
    }
    Region record{static_cast<int16_t>(std::min<std::size_t>(bytes, 32766)), area.bounds()};
    std::memcpy(*block, &record, sizeof record);
    if (!rects.empty())
        std::memcpy(*block + sizeof record, rects.data(), rects.size() * sizeof(Rect));
}

}  // namespace toolbox::quickdraw

using namespace toolbox::quickdraw;

RgnHandle NewRgn(void)
{
    auto *region = reinterpret_cast<RgnHandle>(NewHandleClear(sizeof(Region)));
    if (region)
        (*region)->rgnSize = sizeof(Region);
    return region;
}

void DisposeRgn(RgnHandle region)
{
    if (region)
        DisposeHandle(reinterpret_cast<Handle>(region));
}

void SetRectRgn(RgnHandle region, int16_t left, int16_t top, int16_t right, int16_t bottom)
{
    storeArea(Area(Rect{top, left, bottom, right}), region);
}

void RectRgn(RgnHandle region, const Rect *r)
{
    storeArea(Area(*r), region);
}

void SetEmptyRgn(RgnHandle region)
{
    storeArea({}, region);
}

void CopyRgn(RgnHandle source, RgnHandle destination)
{
    storeArea(areaOf(source), destination);
}

void OffsetRgn(RgnHandle region, int16_t dh, int16_t dv)
{
    storeArea(areaOf(region).movedBy(dh, dv), region);
}

void SectRgn(RgnHandle a, RgnHandle b, RgnHandle result)
{
    storeArea(areaOf(a) & areaOf(b), result);
}

void UnionRgn(RgnHandle a, RgnHandle b, RgnHandle result)
{
    storeArea(areaOf(a) | areaOf(b), result);
}

void DiffRgn(RgnHandle a, RgnHandle b, RgnHandle result)
{
    storeArea(areaOf(a) - areaOf(b), result);
}

void XorRgn(RgnHandle a, RgnHandle b, RgnHandle result)
{
    storeArea(areaOf(a) ^ areaOf(b), result);
}

Boolean EmptyRgn(RgnHandle region)
{
    return areaOf(region).empty();
}

Boolean EqualRgn(RgnHandle a, RgnHandle b)
{
    return areaOf(a) == areaOf(b);
}

Boolean PtInRgn(Point point, RgnHandle region)
{
    return areaOf(region).contains(point.h, point.v);
}

Boolean RectInRgn(const Rect *r, RgnHandle region)
{
    return areaOf(region).touches(*r);
}
