#include "plates/measuring/grid_place.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>
#include <vector>

namespace riders::plates {
namespace {

// So many cells a side tell where the dots are; over more of them a screen that is a little off would blur.
constexpr double kGridCells = 6;

struct PixelWindow {
    int left, top, right, bottom;
};

PixelWindow middleOf(const BitPlate &plate, double dpi, const Place &place, double side)
{
    const auto from = [&](double start, double length) {
        return static_cast<int>(std::lround((start + std::max(0.0, (length - side) / 2)) * dpi));
    };
    const int left = std::clamp(from(place.left, place.width), 0, plate.width),
              top = std::clamp(from(place.top, place.height), 0, plate.height);
    const auto pixels = [&](double length) { return static_cast<int>(std::lround(std::min(length, side) * dpi)); };
    return {left, top, std::min(plate.width, left + pixels(place.width)),
            std::min(plate.height, top + pixels(place.height))};
}

using Turns = std::vector<std::complex<double>>;

// Of a wave, pixel by pixel along one axis; `waves` of them an inch.
Turns turnsOf(double waves, double dpi, int from, int end)
{
    Turns turns;
    for (int i = from; i < end; ++i)
        turns.push_back(std::polar(1.0, 2 * std::numbers::pi * waves * (i + 0.5) / dpi));
    return turns;
}

// How far along the wave, from 0 to 1, the ink has its crest.
std::optional<double> crestOf(const BitPlate &plate, double dpi, const PixelWindow &window, double across,
                              double down)
{
    const Turns x = turnsOf(across, dpi, window.left, window.right),
                y = turnsOf(down, dpi, window.top, window.bottom);
    std::complex<double> sum = 0;
    bool inked = false;
    for (int row = window.top; row < window.bottom; ++row) {
        std::complex<double> ofRow = 0;
        for (int column = window.left; column < window.right; ++column)
            if (plate.at(column, row)) {
                ofRow += x[static_cast<std::size_t>(column - window.left)];
                inked = true;
            }
        sum += ofRow * y[static_cast<std::size_t>(row - window.top)];
    }
    if (!inked)
        return std::nullopt;
    return std::arg(sum) / (2 * std::numbers::pi);
}

}  // namespace

std::optional<GridPoint> middleOfDot(const BitPlate &plate, double dpi, const Place &place, double frequency,
                                     double angle)
{
    if (place.empty() || frequency <= 0)
        return std::nullopt;
    const double turn = angle * std::numbers::pi / 180, along = std::cos(turn), aside = std::sin(turn);
    const PixelWindow window = middleOf(plate, dpi, place, kGridCells / frequency);
    const auto first = crestOf(plate, dpi, window, frequency * along, frequency * aside),
               second = crestOf(plate, dpi, window, -frequency * aside, frequency * along);
    if (!first || !second)
        return std::nullopt;
    // The cell in the window's middle.
    const double x = (window.left + window.right) / 2.0 / dpi, y = (window.top + window.bottom) / 2.0 / dpi;
    const double u = std::round((x * along + y * aside) * frequency - *first) + *first,
                 v = std::round((y * along - x * aside) * frequency - *second) + *second;
    return GridPoint{(u * along - v * aside) / frequency, (u * aside + v * along) / frequency};
}

}  // namespace riders::plates
