#include "plates/measuring/measured_screen.h"

#include <algorithm>
#include <cmath>

#include "meter/meter.h"

namespace riders::plates {
namespace {

constexpr double kLike = 0.95, kLeastLike = 0.85;  // correlations with a shape
constexpr double kPlainly = 0.06;                  // by so much more than the expected one
// This many cells a side are exact enough here, and quick.
constexpr double kCells = 40, kShortest = 0.75, kLongest = 1.5;  // inches

Place middleOf(const Place &place, double side)
{
    const double width = std::min(side, place.width), height = std::min(side, place.height);
    return {place.left + (place.width - width) / 2, place.top + (place.height - height) / 2, width, height};
}

std::string shapeOf(const meter::BitPage &page, const meter::ScreenReading &reading, const std::string &expected)
{
    if (reading.cellPixels < kTellingCell || reading.ink < kLeastTellingInk || reading.ink > 1 - kLeastTellingInk)
        return {};
    const double like = meter::likenessToNamed(page, reading, expected);
    if (like > kLike)
        return expected;
    const std::string nearest = meter::nearestSpot(page, reading);
    const double best = meter::likenessToNamed(page, reading, nearest);
    if (best < kLeastLike)
        return {};
    return like > best - kPlainly ? expected : nearest;
}

}  // namespace

MeasuredScreen measurePlate(const BitPlate &plate, double dpi, const Place &tint, double aboutFrequency,
                            const std::string &shape)
{
    const Place middle = middleOf(tint, std::clamp(kCells / aboutFrequency, kShortest, kLongest));
    const meter::BitPage page{plate.bits.data(), plate.width, plate.height, plate.rowBytes, dpi};
    const auto pixels = [dpi](double inches) { return static_cast<int>(std::lround(inches * dpi)); };
    meter::ScreenReading reading;
    if (!middle.empty())
        reading = meter::readScreen(page, meter::cutToPage(page, {pixels(middle.left), pixels(middle.top),
                                                                  pixels(middle.width), pixels(middle.height)}));
    if (reading.kind == meter::ScreenKind::none)
        reading = meter::readScreen(page);
    if (reading.kind == meter::ScreenKind::none)
        return {};
    const meter::PageWindow &window = reading.window;
    // Shown with two digits, a hair below a quarter turn would be 90.
    const double angle = reading.kind == meter::ScreenKind::dots && reading.angle >= 89.995 ? 0 : reading.angle;
    return {true,
            reading.frequency,
            angle,
            reading.ink,
            {window.left / dpi, window.top / dpi, window.width / dpi, window.height / dpi},
            shapeOf(page, reading, shape),
            reading.kind == meter::ScreenKind::lines};
}

}  // namespace riders::plates
