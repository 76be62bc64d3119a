#include "quickdraw/area.h"

#include <algorithm>

namespace toolbox::quickdraw {

bool emptyRect(const Rect &r)
{
    return r.right <= r.left || r.bottom <= r.top;
}

Area::Area(const Rect &r)
{
    if (emptyRect(r))
        pixman_region32_init(&region_);
    else
        pixman_region32_init_rect(&region_, r.left, r.top, r.right - r.left, r.bottom - r.top);
}

Area::Area(const std::vector<Box> &boxes)
{
    std::vector<Box> full;
    std::copy_if(boxes.begin(), boxes.end(), std::back_inserter(full),
                 [](const Box &box) { return box.x1 < box.x2 && box.y1 < box.y2; });
    if (full.empty())
        pixman_region32_init(&region_);
    else
        pixman_region32_init_rects(&region_, full.data(), static_cast<int>(full.size()));
}

Area::Area(const Area &other) : Area()
{
    pixman_region32_copy(&region_, other.get());
}

Area::Area(Area &&other) noexcept : Area()
{
    std::swap(region_, other.region_);
}

Area &Area::operator=(Area other) noexcept
{
    std::swap(region_, other.region_);
    return *this;
}

Area Area::operator&(const Area &other) const
{
    Area result;
    pixman_region32_intersect(&result.region_, get(), other.get());
    return result;
}

Area Area::operator|(const Area &other) const
{
    Area result;
    pixman_region32_union(&result.region_, get(), other.get());
    return result;
}

Area Area::operator-(const Area &other) const
{
    Area result;
    pixman_region32_subtract(&result.region_, get(), other.get());
    return result;
}

bool Area::operator==(const Area &other) const
{
    return empty() ? other.empty() : pixman_region32_equal(get(), other.get());
}

Area Area::movedBy(int dh, int dv) const
{
    Area result(*this);
    pixman_region32_translate(&result.region_, dh, dv);
    return result;
}

Area Area::scaledBy(int factor) const
{
    if (factor == 1)
        return *this;
    std::vector<Box> scaled;
    for (const Box &box : boxes())
        scaled.push_back({box.x1 * factor, box.y1 * factor, box.x2 * factor, box.y2 * factor});
    return Area(scaled);
}

bool Area::empty() const
{
    return !pixman_region32_not_empty(get());
}

bool Area::contains(int h, int v) const
{
    return pixman_region32_contains_point(get(), h, v, nullptr);
}

bool Area::touches(const Rect &r) const
{
    return !(*this & Area(r)).empty();
}

Rect Area::bounds() const
{
    const Box box = extent();
    auto clamped = [](int value) { return static_cast<int16_t>(std::clamp(value, -32768, 32767)); };
    return {clamped(box.y1), clamped(box.x1), clamped(box.y2), clamped(box.x2)};
}

Box Area::extent() const
{
    return empty() ? Box{} : *pixman_region32_extents(get());
}

std::span<const Box> Area::boxes() const
{
    int count = 0;
    const Box *boxes = pixman_region32_rectangles(get(), &count);
    return {boxes, static_cast<std::size_t>(count)};
}

}  // namespace toolbox::quickdraw
