#include "film/crop_marks.h"

#include <algorithm>

#include "film/drawing/film_points.h"

namespace riders::film {

namespace {

// In points.
constexpr double kLine = 0.5;
constexpr double kCropGap = 6;  // from the trim, where the bleed is narrower
constexpr double kCropLength = 18;
constexpr double kRegisterGap = 4, kRegisterSide = 20, kCircle = 12;

// A cross whose middle is at that place in pixels, and a circle round it.
void drawRegisterMark(Drawing &drawing, std::int64_t x, std::int64_t y, const FilmPoints &points)
{
    const FilmPoints::Thickness line = points.thickness(kLine);
    // The middle is that of the lines, so that both ends of each are alike.
    const auto box = [&](double side) {
        const std::int64_t across = points.across(side / 2), down = points.down(side / 2);
        return PixelBox{x - across, y - down, x + across + line.across % 2, y + down + line.down % 2};
    };
    const std::int64_t left = x - line.across / 2, top = y - line.down / 2;
    const PixelBox cross = box(kRegisterSide);
    drawing.rectangle({cross.left, top, cross.right, top + line.down});
    drawing.rectangle({left, cross.top, left + line.across, cross.bottom});
    drawing.ring(box(kCircle), line.across, line.down);
}

}  // namespace

void drawCropMarks(Drawing &drawing, const PageBoxes &boxes, const screening::Resolution &resolution)
{
    const FilmPoints points(resolution);
    const FilmPoints::Thickness line = points.thickness(kLine);
    const PixelBox &trim = boxes.trim, &bleed = boxes.bleed;
    const std::int64_t gapAcross =
        std::max({points.across(kCropGap), trim.left - bleed.left, bleed.right - trim.right});
    const std::int64_t gapDown =
        std::max({points.down(kCropGap), trim.top - bleed.top, bleed.bottom - trim.bottom});
    const std::int64_t across = points.across(kCropLength), down = points.down(kCropLength);
    // On the trim's edge; a pixel that is over lies outside it.
    const std::int64_t lefts[] = {trim.left - (line.across + 1) / 2, trim.right - line.across / 2};
    const std::int64_t tops[] = {trim.top - (line.down + 1) / 2, trim.bottom - line.down / 2};
    for (const std::int64_t left : lefts) {
        drawing.rectangle({left, trim.top - gapDown - down, left + line.across, trim.top - gapDown});
        drawing.rectangle({left, trim.bottom + gapDown, left + line.across, trim.bottom + gapDown + down});
    }
    for (const std::int64_t top : tops) {
        drawing.rectangle({trim.left - gapAcross - across, top, trim.left - gapAcross, top + line.down});
        drawing.rectangle({trim.right + gapAcross, top, trim.right + gapAcross + across, top + line.down});
    }
}

void drawRegisterMarks(Drawing &drawing, const PageBoxes &boxes, const screening::Resolution &resolution)
{
    const FilmPoints points(resolution);
    const std::int64_t across = points.across(kRegisterGap + kRegisterSide / 2);
    const std::int64_t down = points.down(kRegisterGap + kRegisterSide / 2);
    const PixelBox &page = boxes.page, &trim = boxes.trim;
    const std::int64_t x = (trim.left + trim.right) / 2, y = (trim.top + trim.bottom) / 2;
    drawRegisterMark(drawing, x, page.top - down, points);
    drawRegisterMark(drawing, x, page.bottom + down, points);
    drawRegisterMark(drawing, page.left - across, y, points);
    drawRegisterMark(drawing, page.right + across, y, points);
}

}  // namespace riders::film
