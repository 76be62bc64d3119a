#include "film/sheet.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "film/crop_marks.h"
#include "film/drawing/film_points.h"
#include "film/page_boxes.h"
#include "io/decimal.h"
#include "io/refusal.h"
#include "plates/files/plate.h"

namespace riders::film {

namespace {

constexpr int kSteps[] = {2, 5, 10, 20, 30, 40, 50, 60, 70, 80, 90, 95, 98};
constexpr int kStepCount = static_cast<int>(std::size(kSteps));
// In points.
constexpr double kStepWidth = 17, kStepHeight = 20, kStepNumber = 5.5, kStepNumberRoom = 8, kFrame = 0.25;
constexpr double kWedgeWidth = kStepWidth * kStepCount + 2 * kFrame;
constexpr double kFootHeight = kStepHeight + kStepNumberRoom + 2 * kFrame;
constexpr double kLabelWidth = 260;  // the least
constexpr double kGap = 4;           // between what is drawn, and round all of it
constexpr double kBetween = 12;      // wedge and label

std::string inMillimetres(double columns, double rows, const screening::Resolution &resolution)
{
    return io::decimal(columns / resolution.across * 25.4, 1) + " x " +
           io::decimal(rows / resolution.down * 25.4, 1) + " mm";
}

// Width and height of the film asked for, in pixels, turned as what lies on it.
PixelBox askedFilm(const SheetSize &size, const screening::Resolution &resolution, bool wide)
{
    double width = size.width, height = size.height;
    if (size.turns && wide != (width > height))
        std::swap(width, height);
    return {0, 0, std::llround(width * resolution.across), std::llround(height * resolution.down)};
}

void refuseTooManyPixels(const PixelBox &film, const screening::Resolution &resolution)
{
    if (film.width() > plates::kLongestPlateSide || film.height() > plates::kLongestPlateSide)
        throw io::Refusal("the film would be " +
                          inMillimetres(double(film.width()), double(film.height()), resolution) + ", more than " +
                          std::to_string(plates::kLongestPlateSide) + " pixels on a side: lower the resolution");
}

// Where wedge and label lie below what there is above them: side by side where the film is wide enough.
struct Foot {
    PixelBox wedge, label;
};
Foot footBelow(const PixelBox &above, const MarksAsked &asked, const FilmPoints &points)
{
    const double both = kWedgeWidth + kBetween + kLabelWidth;
    const bool beside = asked.wedge && asked.label && above.width() >= points.across(both);
    const std::int64_t least = points.across(beside ? both : asked.label ? kLabelWidth : kWedgeWidth);
    const std::int64_t width = std::max(above.width(), least);
    const std::int64_t left = above.left + (above.width() - width) / 2;
    const std::int64_t top = above.bottom + points.down(kGap), height = points.down(kFootHeight);
    Foot foot;
    foot.wedge = {left, top, left + points.across(kWedgeWidth), top + height};
    foot.label = {left, top, left + width, top + height};
    if (beside)
        foot.label.left = foot.wedge.right + points.across(kBetween);
    else if (asked.wedge)
        foot.label = foot.label.moved(0, height + points.down(kGap));
    return foot;
}

}  // namespace

Sheet::Sheet(const plates::TonePage &page, const screening::Resolution &resolution, const MarksAsked &asked)
    : resolution_(resolution)
{
    const FilmPoints points(resolution);
    if (asked.label || asked.wedge)
        lettering_ = std::make_unique<Lettering>(resolution);
    drawBesidePage(page, asked);
    PixelBox needed = drawing_.boundsWith(pageBoxes(page, resolution).page);
    const Foot foot = footBelow(needed, asked, points);
    if (asked.wedge) {
        drawWedge(foot.wedge);
        needed = needed.with(foot.wedge);
    }
    if (asked.label) {
        labelBox_ = foot.label;
        needed = needed.with(foot.label);
    }
    if (asked.any())
        needed = needed.grown(points.across(kGap), points.down(kGap));
    cutTo(needed, page, asked);
}

void Sheet::drawBesidePage(const plates::TonePage &page, const MarksAsked &asked)
{
    const PageBoxes boxes = pageBoxes(page, resolution_);
    if (asked.cropMarks)
        drawCropMarks(drawing_, boxes, resolution_);
    if (asked.registerMarks)
        drawRegisterMarks(drawing_, boxes, resolution_);
}

// Steps in a frame, with their numbers below.
void Sheet::drawWedge(const PixelBox &box)
{
    const FilmPoints points(resolution_);
    const FilmPoints::Thickness line = points.thickness(kFrame);
    const std::int64_t bottom = box.top + points.down(kStepHeight + 2 * kFrame);
    const PixelBox inside = PixelBox{box.left, box.top, box.right, bottom}.grown(-line.across, -line.down);
    drawing_.rectangle({box.left, box.top, box.right, inside.top});
    drawing_.rectangle({box.left, inside.bottom, box.right, bottom});
    drawing_.rectangle({box.left, box.top, inside.left, bottom});
    drawing_.rectangle({inside.right, box.top, box.right, bottom});
    for (int step = 0; step < kStepCount; ++step) {
        const std::int64_t left = inside.left + inside.width() * step / kStepCount;
        const std::int64_t right = inside.left + inside.width() * (step + 1) / kStepCount;
        wedge_.push_back({.percent = kSteps[step], .box = {left, inside.top, right, inside.bottom}});
        LetteredLine number = lettering_->line(std::to_string(kSteps[step]), {.size = kStepNumber});
        drawing_.picture((left + right - number.advance) / 2 + number.left,
                         bottom + points.down(kStepNumberRoom - 1.5) + number.top, std::move(number.picture));
    }
}

// Makes the film of that part of the plane, or of the size asked for with that part in its middle.
void Sheet::cutTo(const PixelBox &needed, const plates::TonePage &page, const MarksAsked &asked)
{
    PixelBox film = needed;
    if (asked.sheet) {
        const bool wide = double(needed.width()) / resolution_.across > double(needed.height()) / resolution_.down;
        const PixelBox size = askedFilm(*asked.sheet, resolution_, wide);
        if (size.width() < needed.width() || size.height() < needed.height())
            throw io::Refusal("page " + std::to_string(page.number) + (asked.any() ? " with its marks" : "") +
                              " is " +
                              inMillimetres(double(needed.width()), double(needed.height()), resolution_) +
                              ": it does not fit on a film of " +
                              inMillimetres(double(size.width()), double(size.height()), resolution_) + " (" +
                              asked.sheet->name + ")");
        film = size.moved(needed.left - (size.width() - needed.width()) / 2,
                          needed.top - (size.height() - needed.height()) / 2);
    }
    refuseTooManyPixels(film, resolution_);
    columns_ = static_cast<std::size_t>(film.width());
    rows_ = static_cast<std::size_t>(film.height());
    left_ = static_cast<std::size_t>(-film.left);
    top_ = static_cast<std::size_t>(-film.top);
    drawing_.move(-film.left, -film.top);
    for (WedgeStep &step : wedge_)
        step.box = step.box.moved(-film.left, -film.top);
    if (labelBox_)
        labelBox_ = labelBox_->moved(-film.left, -film.top);
}

}  // namespace riders::film
