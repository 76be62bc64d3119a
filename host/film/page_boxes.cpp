#include "film/page_boxes.h"

#include <algorithm>

#include "film/drawing/film_points.h"

namespace riders::film {

namespace {

PixelBox common(const PixelBox &one, const PixelBox &other)
{
    return {std::max(one.left, other.left), std::max(one.top, other.top), std::min(one.right, other.right),
            std::min(one.bottom, other.bottom)};
}

PixelBox inPixels(const plates::TonePage::Box &box, const PixelBox &page, const FilmPoints &points)
{
    return {points.across(box.left), page.bottom - points.down(box.top), points.across(box.right),
            page.bottom - points.down(box.bottom)};
}

}  // namespace

PageBoxes pageBoxes(const plates::TonePage &page, const screening::Resolution &resolution)
{
    const FilmPoints points(resolution);
    PageBoxes boxes;
    boxes.page = {0, 0, static_cast<std::int64_t>(page.columns), static_cast<std::int64_t>(page.rows)};
    boxes.trim = page.trim ? common(inPixels(*page.trim, boxes.page, points), boxes.page) : boxes.page;
    if (boxes.trim.width() <= 0 || boxes.trim.height() <= 0)
        boxes.trim = boxes.page;
    boxes.bleed =
        page.bleed ? common(inPixels(*page.bleed, boxes.page, points), boxes.page).with(boxes.trim) : boxes.trim;
    return boxes;
}

}  // namespace riders::film
