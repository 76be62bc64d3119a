#include "tables/screen_tables.h"

#include <functional>
#include <optional>
#include <vector>

#include "screening/even_order.h"
#include "shapes/tabulated_spot.h"
#include "tables/formulas.h"
#include "tables/kept_tables.h"

namespace riders::tables {

namespace {

// Everything on which the dots depend.
std::string keyOf(const std::string &shape, const screening::Screen &screen,
                  const screening::Resolution &resolution)
{
    std::string key;
    for (const double number : {screen.frequency, screen.angle, resolution.across, resolution.down})
        key.append(reinterpret_cast<const char *>(&number), sizeof number);
    return key + shape;
}

// Those that take longest: a table of a million pixels is computed in 20 ms, one whose cells are small in 50 to
// 100, and one by way of the interpreter in 300 and more.
bool isWorthKeeping(const screening::Tile &tile, bool byFormula)
{
    constexpr std::int64_t kManyPixels = 1 << 18;
    return !byFormula || tile.pixels >= kManyPixels || screening::hasSmallCells(tile);
}

// By a formula; where there is none, by the values of the spot function at the tile's pixels.
screening::Thresholds keptOrMade(const std::string &key, const screening::Screen &screen,
                                 const screening::Resolution &resolution,
                                 const std::optional<screening::SpotFunction> &formula,
                                 const std::function<std::vector<float>(const screening::Tile &)> &tabulate)
{
    if (auto kept = keptTable(key))
        return *std::move(kept);
    const screening::Tile tile = screening::findTile(screen, resolution);
    screening::Thresholds made =
        formula ? screening::Thresholds(tile, *formula) : screening::Thresholds(tile, tabulate(tile));
    if (isWorthKeeping(tile, formula.has_value()))
        keepTable(key, made);
    return made;
}

}  // namespace

screening::Thresholds thresholdsOf(const screens::Shape &shape, const screening::Screen &screen,
                                   const screening::Resolution &resolution, const shapes::TrialLimits &limits)
{
    return keptOrMade(keyOf(shape.body, screen, resolution), screen, resolution, formulaOf(shape.body),
                      [&](const screening::Tile &tile) { return shapes::tabulatedSpot(shape, tile, limits); });
}

screening::Thresholds thresholdsOf(const std::string &builtInShape, const screening::Screen &screen,
                                   const screening::Resolution &resolution)
{
    // As a frequency, with which the other keys begin, the first word would be too large.
    return keptOrMade(keyOf(builtInShape, screen, resolution).insert(0, "built in"), screen, resolution,
                      formulaNamed(builtInShape), {});
}

}  // namespace riders::tables
