#include "proof/screen_on_plate.h"

#include <cmath>

#include "meter/meter.h"

namespace riders {

MeasuredScreen measurePlate(const BitPlate &plate, double dpi, const Place &even)
{
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
    return {true,
            reading.frequency,
            reading.angle,
            reading.ink,
            {window.left / dpi, window.top / dpi, window.width / dpi, window.height / dpi}};
}

}  // namespace riders
