// From which tone on each pixel of a tile is inked.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "screening/tile.h"

namespace riders::screening {

// As setscreen takes it: x and y from -1 to 1 over a cell, y down on the upright sheet; the highest values are
// inked first. Must return finite numbers and may be called from one thread at a time.
using SpotFunction = std::function<double(double x, double y)>;

// Of a tone from 0, no ink, to 255, all ink, a pixel gets ink where the tone is its threshold or more: 1 to 255.
// Of all pixels of the tile, tone / 255 get ink, to half a pixel. Of equal spot values those on one side of the
// cell are inked first, so that all dots of a tint are alike.
class Thresholds {
public:
    Thresholds(const Tile &tile, const SpotFunction &spot);
    // From the spot function's values at the tile's pixels, row after row (see pixel_places.h). Throws
    // std::invalid_argument where these are not as many.
    Thresholds(const Tile &tile, std::vector<float> spotValues);
    // From what rowOf gave for the tile's rows, as many as it has pixels, row after row.
    Thresholds(const Tile &tile, const std::vector<std::uint8_t> &thresholds);

    const Tile &tile() const { return tile_; }
    // The thresholds of row y of a page are in rowOf(y): those of column x at placeIn(x, y), and so on to
    // length(), where they begin again; kRun more may be read. Any x and y.
    const std::uint8_t *rowOf(std::int64_t y) const;
    std::size_t placeIn(std::int64_t x, std::int64_t y) const;
    std::size_t length() const { return length_; }
    static constexpr std::size_t kRun = 32;

private:
    Tile tile_;
    std::size_t length_;  // of a row: the tile's width, more than once where it is short
    std::vector<std::uint8_t> rows_;
};

}  // namespace riders::screening
