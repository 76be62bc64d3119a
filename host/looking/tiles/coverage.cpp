#include "looking/tiles/coverage.h"

#include <algorithm>
#include <array>
#include <bit>

#include "looking/tiles/tile_set.h"

namespace riders::looking {
namespace {

// How many pixels of a square there are along one side, the last being cut off by the plate's edge.
int pixelsIn(int square, int level, int side)
{
    const long long from = static_cast<long long>(square) << level;
    return static_cast<int>(std::min(1LL << level, side - from));
}

// The four pairs of bits of a byte, counted.
std::array<std::array<std::uint8_t, 4>, 256> countedPairs()
{
    std::array<std::array<std::uint8_t, 4>, 256> pairs{};
    for (unsigned byte = 0; byte < pairs.size(); ++byte)
        for (unsigned pair = 0; pair < 4; ++pair)
            pairs[byte][pair] = static_cast<std::uint8_t>(std::popcount(byte >> (6 - 2 * pair) & 3));
    return pairs;
}

}  // namespace

Coverage::Coverage(int level, int width, int height)
    : level_(level), width_(width), height_(height), belowHeight_(sideOn(level - 1, height)),
      counts_(static_cast<std::size_t>(sideOn(level, width)))
{
}

void Coverage::beginRow()
{
    if (below_ % 2 == 0) {
        std::fill(counts_.begin(), counts_.end(), 0);
        ++row_;
    }
}

bool Coverage::isWhole()
{
    ++below_;
    return below_ % 2 == 0 || below_ == belowHeight_;
}

bool Coverage::takeBits(const std::uint8_t *bits)
{
    static const auto pairs = countedPairs();
    beginRow();
    const std::size_t whole = static_cast<std::size_t>(width_) / 8;
    std::uint32_t *out = counts_.data();
    for (std::size_t i = 0; i < whole; ++i, out += 4)
        if (bits[i] != 0)
            for (std::size_t pair = 0; pair < 4; ++pair)
                out[pair] += pairs[bits[i]][pair];
    // What lies past the width does not count.
    for (int x = static_cast<int>(whole) * 8; x < width_; ++x)
        counts_[static_cast<std::size_t>(x) / 2] += bits[x >> 3] >> (7 - (x & 7)) & 1U;
    return isWhole();
}

bool Coverage::takeCounts(const std::uint32_t *counts, int width)
{
    beginRow();
    const std::size_t whole = static_cast<std::size_t>(width) / 2;
    for (std::size_t i = 0; i < whole; ++i)
        counts_[i] += counts[2 * i] + counts[2 * i + 1];
    if (width % 2 != 0)
        counts_[whole] += counts[width - 1];
    return isWhole();
}

void Coverage::shares(std::uint8_t *row) const
{
    const auto down = static_cast<std::uint64_t>(pixelsIn(row_, level_, height_));
    for (int x = 0; x < width(); ++x) {
        const std::uint64_t area = down * static_cast<std::uint64_t>(pixelsIn(x, level_, width_));
        row[x] = static_cast<std::uint8_t>((counts_[static_cast<std::size_t>(x)] * std::uint64_t{255} + area / 2) /
                                           area);
    }
}

}  // namespace riders::looking
