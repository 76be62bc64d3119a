#include "film/plate_screens.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "io/refusal.h"
#include "screens/number_text.h"

namespace riders::film {
namespace {

using screens::numberText;

constexpr double kLeastCell = 2;  // pixels along a cell's side

void refuseUnlessPossible(double frequency, const screening::Resolution &resolution)
{
    const double coarser = std::min(resolution.across, resolution.down);
    if (coarser / frequency < kLeastCell)
        throw io::Refusal(numberText(frequency) + " lines per inch need " + numberText(kLeastCell * frequency) +
                          " dpi or more, not " + numberText(coarser));
    if (resolution.across / frequency * resolution.down / frequency > double(screening::kMostCellPixels))
        throw io::Refusal(numberText(frequency) + " lines per inch are too coarse for " + numberText(coarser) +
                          " dpi");
}

}  // namespace

std::shared_ptr<const PlateScreening> PlateScreens::of(const PlateDots &dots)
{
    Entry *entry = nullptr;
    {
        const std::lock_guard lock(mutex_);
        entry = &made_[{dots.frequency, dots.angle, dots.shape.name, dots.shape.body}];
    }
    // Others wait only where they want the same.
    const std::lock_guard lock(entry->mutex);
    if (!entry->screening)
        entry->screening = make(dots);
    return entry->screening;
}

std::shared_ptr<const PlateScreening> PlateScreens::make(const PlateDots &dots)
{
    refuseUnlessPossible(dots.frequency, resolution_);
    // Angles count clockwise on the sheet, the page is turned the other way.
    screening::Thresholds thresholds =
        thresholdsOf(dots.shape, {dots.frequency, dots.angle - rotation_}, resolution_);
    const screening::Tile &tile = thresholds.tile();
    const double across = double(tile.rightU) / double(tile.pixels) * resolution_.across,
                 down = double(tile.downU) / double(tile.pixels) * resolution_.down;
    const double angle = std::atan2(down, across) * 180 / std::numbers::pi + rotation_;
    // Of the turns that are the same number of degrees, the one nearest to what was asked for.
    const double nearest = dots.angle + std::remainder(angle - dots.angle, 360);
    const double frequency = std::hypot(across, down);
    return std::make_shared<const PlateScreening>(PlateScreening{std::move(thresholds), frequency, nearest});
}

}  // namespace riders::film
