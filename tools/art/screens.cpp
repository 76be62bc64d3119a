#include "screens.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace art {
namespace {

// The share of a cell whose spot value is higher, from samples taken once.
class Ranking {
public:
    explicit Ranking(const Spot &spot)
    {
        constexpr int side = 48;
        for (int i = 0; i < side * side; ++i)
            values_.push_back(spot((i % side + 0.5) / side * 2 - 1, (i / side + 0.5) / side * 2 - 1));
        std::sort(values_.begin(), values_.end());
    }
    double above(double value) const
    {
        auto higher = values_.end() - std::upper_bound(values_.begin(), values_.end(), value);
        return static_cast<double>(higher) / static_cast<double>(values_.size());
    }

private:
    std::vector<double> values_;
};

double inCell(double along)
{
    return (along - std::floor(along)) * 2 - 1;
}

}  // namespace

double roundSpot(double x, double y)
{
    return (std::cos(std::numbers::pi * x) + std::cos(std::numbers::pi * y)) / 2;
}

double ellipseSpot(double x, double y)
{
    return 1 - (x * x + 0.4 * y * y);
}

double lineSpot(double, double y)
{
    return -std::abs(y);
}

double diamondSpot(double x, double y)
{
    return 1 - (std::abs(x) + 0.75 * std::abs(y));
}

double crossSpot(double x, double y)
{
    return -std::min(std::abs(x), std::abs(y));
}

bool Screen::inks(double h, double v, double tint) const
{
    static std::vector<std::pair<double (*)(double, double), Ranking>> known;
    const auto *function = spot.target<double (*)(double, double)>();
    auto found = std::find_if(known.begin(), known.end(), [&](const auto &each) { return each.first == *function; });
    if (found == known.end())
        found = known.insert(known.end(), {*function, Ranking(spot)});
    double turn = angle * std::numbers::pi / 180;
    double along = (h * std::cos(turn) - v * std::sin(turn)) / period;
    double across = (h * std::sin(turn) + v * std::cos(turn)) / period;
    return found->second.above(spot(inCell(along), inCell(across))) < tint;
}

double covered(const Coverage &ink, int h, int v)
{
    constexpr int samples = 6;
    int inked = 0;
    for (int i = 0; i < samples * samples; ++i)
        inked += ink(h + (i % samples + 0.5) / samples, v + (i / samples + 0.5) / samples);
    return static_cast<double>(inked) / (samples * samples);
}

std::uint32_t printed(std::uint32_t paper, std::uint32_t ink, double coverage)
{
    std::uint32_t result = 0;
    for (int shift : {16, 8, 0}) {
        double under = (paper >> shift & 255) / 255.0, over = (ink >> shift & 255) / 255.0;
        double mixed = under * (1 - coverage + coverage * over);
        result |= static_cast<std::uint32_t>(std::lround(mixed * 255)) << shift;
    }
    return result;
}

toolbox::Picture drawn(int width, int height, const std::function<std::uint32_t(int h, int v)> &pixel)
{
    toolbox::Picture picture{width, height, {}};
    for (int v = 0; v < height; ++v)
        for (int h = 0; h < width; ++h)
            picture.pixels.push_back(pixel(h, v));
    return picture;
}

}  // namespace art
