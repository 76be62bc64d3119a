// The order in which the pixels of small cells are inked.
//
// Where a cell has few pixels, how many of them its dot gets depends on where the cell lies on them, in a pattern
// that is coarser than the screen and can be seen. So pixels at the dots' edges change places: they are inked
// later where, over about a cell, there is too much ink at their tone, and earlier where there is too little.
#pragma once

#include <cstdint>
#include <vector>

#include "screening/tile.h"

namespace riders::screening {

// Whether a tile's cells are so small that it matters.
bool hasSmallCells(const Tile &tile);

// From the thresholds of a tile's pixels, row after row, to numbers that say in which order to ink them, the least
// first. In whole numbers throughout, so that all machines make the same dots.
std::vector<float> evenOrder(const Tile &tile, const std::vector<std::uint8_t> &thresholds);

}  // namespace riders::screening
