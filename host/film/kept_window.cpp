#include "film/kept_window.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "meter/meter.h"

namespace riders::film {
namespace {

// So many cells a side tell whether a screen is the one asked for, and soon.
constexpr double kCells = 24, kShortest = 0.4, kLongest = 1.5;  // inches
// Shapes cannot be told from each other on cells of fewer pixels, or near white and solid ink.
constexpr double kTellingCell = 8, kLeastInk = 0.1;
constexpr double kLike = 0.9;  // correlation with a shape

// The shape that the dots have, if they are like the one expected, or plainly like another.
std::string shapeOf(const meter::BitPage &page, const meter::ScreenReading &reading, const std::string &expected)
{
    if (expected.empty() || reading.cellPixels < kTellingCell || reading.ink < kLeastInk ||
        reading.ink > 1 - kLeastInk)
        return {};
    if (meter::likenessToNamed(page, reading, expected) > kLike)
        return expected;
    const std::string nearest = meter::nearestSpot(page, reading);
    return meter::likenessToNamed(page, reading, nearest) > kLike ? nearest : "";
}

std::size_t pixels(double inches, double dpi)
{
    return static_cast<std::size_t>(std::max(0L, std::lround(inches * dpi)));
}

}  // namespace

KeptWindow::KeptWindow(const plates::Place &place, const screening::Resolution &resolution, std::size_t left,
                       std::size_t top, std::size_t columns, std::size_t rows)
    : resolution_(resolution)
{
    if (place.empty())
        return;
    // From whole bytes, so that rows are copied as they are.
    left_ = left + pixels(place.left, resolution.across);
    firstByte_ = left_ / 8;
    top_ = top + pixels(place.top, resolution.down);
    const std::size_t right = std::min(columns, left + pixels(place.left + place.width, resolution.across)),
                      bottom = std::min(rows, top + pixels(place.top + place.height, resolution.down));
    if (firstByte_ * 8 < right && top_ < bottom)
        bits_ = plates::BitPlate(static_cast<int>(right - firstByte_ * 8), static_cast<int>(bottom - top_));
}

void KeptWindow::take(std::size_t y, const std::uint8_t *bits)
{
    if (y >= top_ && y - top_ < static_cast<std::size_t>(bits_.height))
        std::memcpy(bits_.row(static_cast<int>(y - top_)), bits + firstByte_, bits_.rowBytes);
}

// The meter knows only those. Pixels that are twice as high as wide become two, and so on.
plates::BitPlate KeptWindow::inSquarePixels() const
{
    const double dpi = std::max(resolution_.across, resolution_.down);
    const double across = resolution_.across / dpi, down = resolution_.down / dpi;
    plates::BitPlate square(static_cast<int>(bits_.width / across), static_cast<int>(bits_.height / down));
    for (int y = 0; y < square.height; ++y) {
        const int from = std::min(static_cast<int>(y * down), bits_.height - 1);
        if (across == 1) {
            std::memcpy(square.row(y), bits_.row(from), bits_.rowBytes);
            continue;
        }
        for (int x = 0; x < square.width; ++x)
            if (bits_.at(std::min(static_cast<int>(x * across), bits_.width - 1), from))
                square.row(y)[x >> 3] |= static_cast<std::uint8_t>(0x80 >> (x & 7));
    }
    return square;
}

plates::BitPlate KeptWindow::upright(int rotation) const
{
    const double dpi = std::max(resolution_.across, resolution_.down);
    const double across = resolution_.across / dpi, down = resolution_.down / dpi;
    const int first = static_cast<int>(left_ - firstByte_ * 8);
    // As it lies on the film.
    const int width = static_cast<int>((bits_.width - first) / across),
              height = static_cast<int>(bits_.height / down);
    const bool lies = rotation == 90 || rotation == 270;
    plates::BitPlate upright(lies ? height : width, lies ? width : height);
    for (int y = 0; y < upright.height; ++y)
        for (int x = 0; x < upright.width; ++x) {
            const int filmX = rotation == 90    ? y
                              : rotation == 180 ? width - 1 - x
                              : rotation == 270 ? width - 1 - y
                                                : x;
            const int filmY = rotation == 90    ? height - 1 - x
                              : rotation == 180 ? height - 1 - y
                              : rotation == 270 ? x
                                                : y;
            if (bits_.at(first + std::min(static_cast<int>(filmX * across), bits_.width - first - 1),
                         std::min(static_cast<int>(filmY * down), bits_.height - 1)))
                upright.row(y)[x >> 3] |= static_cast<std::uint8_t>(0x80 >> (x & 7));
        }
    return upright;
}

plates::MeasuredScreen KeptWindow::measure(double aboutFrequency, const std::string &shape) const
{
    if (bits_.width == 0 || bits_.height == 0)
        return {};
    const double dpi = std::max(resolution_.across, resolution_.down);
    const plates::BitPlate square = inSquarePixels();
    const meter::BitPage page{square.bits.data(), square.width, square.height, square.rowBytes, dpi};
    const double side = std::clamp(kCells / aboutFrequency, kShortest, kLongest);
    const meter::PageWindow all{0, 0, square.width, square.height};
    const meter::ScreenReading reading =
        meter::readScreen(page, meter::middleOf(all, static_cast<int>(std::lround(side * dpi))));
    if (reading.kind == meter::ScreenKind::none)
        return {};
    plates::MeasuredScreen measured{.found = true,
                                    .frequency = reading.frequency,
                                    .angle = reading.angle,
                                    .ink = reading.ink,
                                    .where = {},
                                    .shape = shapeOf(page, reading, shape),
                                    .lines = reading.kind == meter::ScreenKind::lines};
    return measured;
}

plates::Place turned(const plates::Place &place, int rotation, double width, double height)
{
    const double right = width - place.left - place.width, bottom = height - place.top - place.height;
    switch (rotation) {
    case 90:
        return {place.top, right, place.height, place.width};
    case 180:
        return {right, bottom, place.width, place.height};
    case 270:
        return {bottom, place.left, place.height, place.width};
    default:
        return place;
    }
}

}  // namespace riders::film
