// Which tiles there are of a plate, to be looked at from the whole sheet down to the single dot.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace riders::looking {

// Pixels along a tile's side; the last ones of a row or column may have fewer.
inline constexpr int kTileSide = 512;

// Level 0 is the plate, pixel by pixel; a pixel of level n is the mean of a square of 2^n x 2^n of them, or of as
// many of these as there are at the plate's edge.
struct TileLevel {
    int across = 0, down = 0;  // tiles
    std::vector<bool> inked;   // row by row; tiles without ink are no files

    bool has(int x, int y) const { return inked[static_cast<std::size_t>(y) * across + x]; }
};

struct TileSet {
    std::string folder;             // its name, a URL; empty when there are no tiles
    int width = 0, height = 0;      // of the plate, pixels
    std::vector<TileLevel> levels;  // the last has one tile
};

// How many levels a plate of that size has: up to the one that fits into a tile.
int levelsOf(int width, int height);
// Pixels of a plate's side on a level.
int sideOn(int level, int side);
// "2/13-7.png", below the set's folder.
std::string tileName(int level, int x, int y);

}  // namespace riders::looking
