#include "screens/meter_support.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

namespace meter = riders::meter;

// The value that the inked part of a cell lies above.
double threshold(double (*spot)(double, double), double ink)
{
    constexpr int side = 500;
    std::vector<double> values;
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x)
            values.push_back(spot((2 * x + 1.0) / side - 1, (2 * y + 1.0) / side - 1));
    const auto at = values.begin() + std::min<long>(std::lround(ink * side * side), side * side - 1);
    std::nth_element(values.begin(), at, values.end(), std::greater<>());
    return *at;
}

}  // namespace

PaintedPage::PaintedPage(int width, int height, double dpi)
{
    const std::size_t rowBytes = (static_cast<std::size_t>(width) + 7) / 8;
    bits_.resize(rowBytes * static_cast<std::size_t>(height));
    page_ = {bits_.data(), width, height, rowBytes, dpi};
}

void PaintedPage::set(int x, int y, bool ink)
{
    std::uint8_t &byte = bits_[static_cast<std::size_t>(y) * page_.rowBytes + static_cast<std::size_t>(x) / 8];
    const int bit = 0x80 >> (x & 7);
    byte = static_cast<std::uint8_t>(ink ? byte | bit : byte & ~bit);
}

void PaintedPage::tint(const meter::PageWindow &where, const IdealScreen &screen)
{
    const auto spot = screen.spot ? screen.spot : meter::namedSpots().front().value;
    const double least = threshold(spot, screen.ink);
    const double turn = screen.angle * std::numbers::pi / 180, scale = screen.frequency / screen.dpi;
    const double c = std::cos(turn) * scale, s = std::sin(turn) * scale;
    for (int y = where.top; y < where.top + where.height; ++y)
        for (int x = where.left; x < where.left + where.width; ++x) {
            const double px = x + 0.5, py = y + 0.5;
            // The cell's x axis lies `angle` clockwise from the right.
            const double u = px * c + py * s, v = py * c - px * s;
            set(x, y, spot(2 * (u - std::floor(u)) - 1, 2 * (v - std::floor(v)) - 1) > least);
        }
}

void PaintedPage::fill(const meter::PageWindow &where)
{
    for (int y = where.top; y < where.top + where.height; ++y)
        for (int x = where.left; x < where.left + where.width; ++x)
            set(x, y, true);
}
