// Where in their cells the pixels of a tile lie.
#pragma once

#include <cstdint>
#include <vector>

#include "screening/tile.h"

namespace riders::screening {

// The middles of the pixels, in whole numbers: each u and v is from 0 to range - 1, and 2 * u / range - 1 is the x
// that a spot function takes. A step right or down adds its u and v; what reaches the range loses it.
struct PixelPlaces {
    std::int64_t columns = 0, rows = 0, range = 0;
    std::int64_t startU = 0, startV = 0;  // of the first row's first pixel
    std::int64_t rightU = 0, rightV = 0, downU = 0, downV = 0;
};

PixelPlaces placesOf(const Tile &tile);

// Calls take(x, y) for each pixel, row after row.
template <typename Take>
void eachPlace(const PixelPlaces &places, Take take)
{
    const double scale = 2 / double(places.range);
    const auto step = [&](std::int64_t &place, std::int64_t by) {
        place += by;
        place -= place >= places.range ? places.range : 0;
    };
    std::int64_t startU = places.startU, startV = places.startV;
    for (std::int64_t row = 0; row < places.rows; ++row, step(startU, places.downU), step(startV, places.downV)) {
        std::int64_t u = startU, v = startV;
        for (std::int64_t column = 0; column < places.columns; ++column) {
            take(double(u) * scale - 1, double(v) * scale - 1);
            step(u, places.rightU), step(v, places.rightV);
        }
    }
}

}  // namespace riders::screening
