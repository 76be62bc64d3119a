// The spot values of any dot shape at the pixels of a tile, from the interpreter.
#pragma once

#include <vector>

#include "screening/tile.h"
#include "shapes/try_shapes.h"

namespace riders::shapes {

// Tiles of no more pixels than this have each of them computed, which gives the interpreter's own dots; it matters
// where cells are small, or all alike. In larger ones pixels lie closer together in their cells than the values of
// a grid of kGridSide a side, between which those of the pixels are interpolated.
inline constexpr std::int64_t kMostComputedPixels = 1 << 17;
inline constexpr int kGridSide = 256;

// The values at the tile's pixels, row after row, as Thresholds takes them. Takes half a second at most for a
// simple shape. Throws Refusal, which names the shape and says why it is none, and Interrupted.
std::vector<float> tabulatedSpot(const screens::Shape &shape, const screening::Tile &tile,
                                 const TrialLimits &limits = {});

}  // namespace riders::shapes
