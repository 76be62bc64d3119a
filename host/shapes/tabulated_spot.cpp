#include "shapes/tabulated_spot.h"

#include <algorithm>
#include <cmath>

#include "io/refusal.h"

namespace riders::shapes {
namespace {

std::vector<float> valuesAt(const screens::Shape &shape, const screening::PixelPlaces &places,
                            const TrialLimits &limits)
{
    ShapeTrial trial = tabulateShape(shape, places, limits);
    if (!trial.problem.empty())
        throw io::Refusal("the dot shape " + shape.name + " cannot be used: " + trial.problem);
    return std::move(trial.values);
}

// The grid's values lie at -1, and so on to a step before 1.
screening::PixelPlaces gridPlaces()
{
    return {.columns = kGridSide,
            .rows = kGridSide,
            .range = kGridSide,
            .startU = 0,
            .startV = 0,
            .rightU = 1,
            .rightV = 0,
            .downU = 0,
            .downV = 1};
}

// Between which two of the grid's columns or rows a place lies. At the end of the cell there is no further one:
// the slope between the last two goes on, since the next cell may begin with another value.
struct Between {
    explicit Between(double place)
        : first(std::clamp(int((place + 1) / 2 * kGridSide), 0, kGridSide - 2)),
          share(static_cast<float>((place + 1) / 2 * kGridSide - first))
    {
    }
    int first;
    float share;
};

float interpolated(const std::vector<float> &grid, double x, double y)
{
    const Between column(x), row(y);
    const float *upper = grid.data() + static_cast<std::size_t>(row.first) * kGridSide + column.first,
                *lower = upper + kGridSide;
    return std::lerp(std::lerp(upper[0], upper[1], column.share), std::lerp(lower[0], lower[1], column.share),
                     row.share);
}

}  // namespace

std::vector<float> tabulatedSpot(const screens::Shape &shape, const screening::Tile &tile,
                                 const TrialLimits &limits)
{
    const screening::PixelPlaces places = screening::placesOf(tile);
    if (tile.pixels <= kMostComputedPixels)
        return valuesAt(shape, places, limits);
    const std::vector<float> grid = valuesAt(shape, gridPlaces(), limits);
    std::vector<float> values;
    values.reserve(static_cast<std::size_t>(tile.pixels));
    screening::eachPlace(places, [&](double x, double y) { values.push_back(interpolated(grid, x, y)); });
    return values;
}

}  // namespace riders::shapes
