#include "screening/pixel_places.h"

#include "screening/remainder.h"

namespace riders::screening {

PixelPlaces placesOf(const Tile &tile)
{
    // Twice as fine as a pixel, whose middle counts.
    const std::int64_t range = 2 * tile.pixels;
    PixelPlaces places{.columns = tile.width, .rows = tile.height, .range = range};
    places.startU = remainderFrom0(tile.rightU + tile.downU, range);
    places.startV = remainderFrom0(tile.rightV + tile.downV, range);
    places.rightU = remainderFrom0(2 * tile.rightU, range);
    places.rightV = remainderFrom0(2 * tile.rightV, range);
    places.downU = remainderFrom0(2 * tile.downU, range);
    places.downV = remainderFrom0(2 * tile.downV, range);
    return places;
}

}  // namespace riders::screening
