// The smallest part of a screen that repeats on whole pixels.
//
// A screen at any frequency and angle never quite repeats on pixels, but some vectors of whole cells end very
// close to whole pixels. Two of them span a supercell: the screen is slanted and stretched by the little that is
// missing, and repeats exactly. The supercell is a parallelogram of any form, so it can be much smaller than a
// square as exact.
#pragma once

#include <cstdint>

namespace riders::screening {

// Pixels per inch, across and down; they need not be the same.
struct Resolution {
    double across = 0, down = 0;
};

// A screen as it was asked for. The angle is that of setscreen: on the upright sheet, clockwise.
struct Screen {
    double frequency = 0;  // lines per inch, at most half the resolution
    double angle = 0;      // degrees, any
};

// How far the screen may be off that is made of the one asked for; above 0.
struct Tolerance {
    double frequency = 0.008;  // lines per inch
    double angle = 0.0015;     // degrees
};

// Pixel (x, y), counted to the right and down, is the same as (x + width, y) and as (x + shift, y + height).
// A step to the right is (rightU, rightV) / pixels of a cell's sides, one down (downU, downV) / pixels.
struct Tile {
    std::int64_t width = 0, height = 0, shift = 0;  // shift: 0 to width - 1
    std::int64_t pixels = 0;                        // width times height
    std::int64_t rightU = 0, rightV = 0, downU = 0, downV = 0;
    // What repeats too soon for 256 steps is made larger: `copies` by `copies` of what the two vectors here span,
    // in pixels, in which the copies are alike but for the last pixels of a step.
    std::int64_t copies = 1;
    std::int64_t firstX = 0, firstY = 0, secondX = 0, secondY = 0;
    // The worst of both of the screen's waves.
    double frequencyError = 0, angleError = 0;  // lines per inch, degrees
};

// The smallest tile found that keeps within the tolerance; the closest where none of at most kMostTilePixels does.
// Throws std::invalid_argument for a frequency above half the resolution, or one of which a cell has more than
// kMostCellPixels.
inline constexpr std::int64_t kMostTilePixels = std::int64_t(1) << 24, kMostCellPixels = kMostTilePixels / 2;
Tile findTile(const Screen &screen, const Resolution &resolution, const Tolerance &tolerance = {});

}  // namespace riders::screening
