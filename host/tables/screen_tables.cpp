#include "tables/screen_tables.h"

#include "screening/even_order.h"
#include "shapes/tabulated_spot.h"
#include "tables/formulas.h"
#include "tables/kept_tables.h"

namespace riders::tables {

namespace {

// Everything on which the dots depend.
std::string keyOf(const screens::Shape &shape, const screening::Screen &screen,
                  const screening::Resolution &resolution)
{
    std::string key;
    for (const double number : {screen.frequency, screen.angle, resolution.across, resolution.down})
        key.append(reinterpret_cast<const char *>(&number), sizeof number);
    return key + shape.body;
}

// Those that take longest: a table of a million pixels is computed in 20 ms, one whose cells are small in 50 to 100, and
// one by way of the interpreter in 300 and more.
bool isWorthKeeping(const screening::Tile &tile, bool byFormula)
{
    constexpr std::int64_t kManyPixels = 1 << 18;
    return !byFormula || tile.pixels >= kManyPixels || screening::hasSmallCells(tile);
}

}  // namespace

screening::Thresholds thresholdsOf(const screens::Shape &shape, const screening::Screen &screen,
                                   const screening::Resolution &resolution, const shapes::TrialLimits &limits)
{
    const std::string key = keyOf(shape, screen, resolution);
    if (auto kept = keptTable(key))
        return *std::move(kept);
    const screening::Tile tile = screening::findTile(screen, resolution);
    const auto formula = formulaOf(shape.body);
    screening::Thresholds made = formula ? screening::Thresholds(tile, *formula)
                                         : screening::Thresholds(tile, shapes::tabulatedSpot(shape, tile, limits));
    if (isWorthKeeping(tile, formula.has_value()))
        keepTable(key, made);
    return made;
}

}  // namespace riders::tables
