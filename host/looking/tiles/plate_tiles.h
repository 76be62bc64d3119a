// The tiles of a plate, made while its rows go by.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

#include "looking/tiles/coverage.h"
#include "looking/tiles/tile_picture.h"
#include "looking/tiles/tile_set.h"
#include "plates/files/tiled_plate.h"

namespace riders::looking {

enum class FineTiles {
    files,    // like all others
    onDemand  // none: the plate is kept, see tile_on_demand.h
};

// Keeps a row of tiles of each level, so memory grows with the plate's width, not its height. Used by one thread
// at a time.
class PlateTiles {
public:
    // `folder` is made; the set is called as it is. Throws Refusal, as the others do.
    PlateTiles(std::filesystem::path folder, int width, int height, Colour ink, FineTiles fine = FineTiles::files);

    // The plate's next row, from the top down: a set bit is ink, the leftmost pixel the highest bit of a byte.
    void row(const std::uint8_t *bits);
    // After the last row.
    TileSet finish();

private:
    // The row of tiles that is being made: of level 0 its bits, of the others shares of ink.
    struct Strip {
        int width = 0, height = 0;  // of the level, pixels
        int taken = 0;              // rows
        std::size_t rowBytes = 0;
        std::vector<std::uint8_t> rows;

        std::uint8_t *next() { return rows.data() + static_cast<std::size_t>(taken % kTileSide) * rowBytes; }
    };

    void taken(std::size_t level);
    void takeShares(std::size_t level);
    void writeStrip(std::size_t level);
    bool isOnDemand(std::size_t level) const;
    // Of a tile of the strip, the x-th; until the next one is asked for.
    TileShares sharesOf(const Strip &strip, bool bits, int x, int rows);

    const std::filesystem::path folder_;
    const InkShades shades_;
    TileSet set_;
    std::vector<Strip> strips_;                      // by level
    std::vector<Coverage> coverages_;                // of level 1 and up
    std::optional<plates::TiledPlateWriter> plate_;  // where fine tiles are made on demand
    std::vector<std::uint8_t> tile_;                 // shares of one of level 0
};

}  // namespace riders::looking
