#include "proof/screen_on_plate.h"

#include <algorithm>
#include <cmath>

#include "meter/meter.h"

namespace riders {
namespace {

// So many cells a side are exact enough here, and quick.
constexpr double kCells = 40, kShortest = 0.75, kLongest = 1.5;  // inches

Place middleOf(const Place &place, double side)
{
    const double width = std::min(side, place.width), height = std::min(side, place.height);
    return {place.left + (place.width - width) / 2, place.top + (place.height - height) / 2, width, height};
}

}  // namespace

MeasuredScreen measurePlate(const BitPlate &plate, double dpi, const Place &tint, double aboutFrequency)
{
    const Place even = middleOf(tint, std::clamp(kCells / aboutFrequency, kShortest, kLongest));
    const BitPage page{plate.bits.data(), plate.width, plate.height, plate.rowBytes, dpi};
    const auto pixels = [dpi](double inches) { return static_cast<int>(std::lround(inches * dpi)); };
    ScreenReading reading;
    if (!even.empty())
        reading = readScreen(
            page, cutToPage(page, {pixels(even.left), pixels(even.top), pixels(even.width), pixels(even.height)}));
    if (reading.kind == ScreenKind::none)
        reading = readScreen(page);
    if (reading.kind == ScreenKind::none)
        return {};
    const PageWindow &window = reading.window;
    // Shown with two digits, a hair below a quarter turn would be 90.
    const double angle = reading.kind == ScreenKind::dots && reading.angle >= 89.995 ? 0 : reading.angle;
    return {true,
            reading.frequency,
            angle,
            reading.ink,
            {window.left / dpi, window.top / dpi, window.width / dpi, window.height / dpi}};
}

}  // namespace riders
