#include "tables/screen_tables.h"

#include "shapes/tabulated_spot.h"
#include "tables/formulas.h"

namespace riders::tables {

screening::Thresholds thresholdsOf(const screens::Shape &shape, const screening::Screen &screen,
                                   const screening::Resolution &resolution, const shapes::TrialLimits &limits)
{
    const screening::Tile tile = screening::findTile(screen, resolution);
    if (const auto formula = formulaOf(shape.body))
        return {tile, *formula};
    return {tile, shapes::tabulatedSpot(shape, tile, limits)};
}

}  // namespace riders::tables
