// How much ink is in squares of pixels, from the rows of a plate.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace riders::looking {

// The rows of one level of tiles from those of the level below: how many pixels of the plate have ink in each
// square, and, as a share of the pixels that the square has there, from 0 to 255.
class Coverage {
public:
    // Of squares of 2^level pixels; `level` is 1 or more. `width` and `height` are the plate's.
    Coverage(int level, int width, int height);

    // The next row of the level below, which is the plate: a set bit is ink, the leftmost pixel the highest bit.
    // True where a row of this level is whole then.
    bool takeBits(const std::uint8_t *bits);
    // The same where the level below is one of these.
    bool takeCounts(const std::uint32_t *counts, int width);

    int width() const { return static_cast<int>(counts_.size()); }
    // Of the row that is whole; until the next one is taken.
    const std::uint32_t *counts() const { return counts_.data(); }
    void shares(std::uint8_t *row) const;

private:
    void beginRow();
    bool isWhole();

    const int level_, width_, height_;
    int below_ = 0;        // rows taken
    int row_ = -1;         // the one that is being made
    int belowHeight_ = 0;  // rows of the level below
    std::vector<std::uint32_t> counts_;
};

}  // namespace riders::looking
