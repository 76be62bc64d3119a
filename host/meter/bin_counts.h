// Counting the pixels of a row by the bins of the cell into which they fall: what measuring spends its time on.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace riders::meter {

inline constexpr int kBinBits = 5;
inline constexpr int kBins = 1 << kBinBits;  // along each wave of a cell

inline std::size_t binOf(std::uint32_t u, std::uint32_t v)
{
    return std::size_t(v >> (32 - kBinBits)) * kBins + (u >> (32 - kBinBits));
}

// Pixels in each bin; first the white ones, then those of ink.
using BinCounts = std::array<std::uint32_t, std::size_t(2) * kBins * kBins>;

inline std::uint32_t pixelsIn(const BinCounts &counts, std::size_t bin)
{
    return counts[bin] + counts[bin + std::size_t(kBins) * kBins];
}
inline std::uint32_t inkedIn(const BinCounts &counts, std::size_t bin)
{
    return counts[bin + std::size_t(kBins) * kBins];
}

// Where a row's first pixel lies in its cell, and from each pixel to the next; 2^32 for a whole period.
struct Phases {
    std::uint32_t u, v, stepU, stepV;
};

// Adds the pixels from x to end - 1 of a row of bits to the counts.
void countBins(const std::uint8_t *row, int x, int end, const Phases &first, BinCounts &counts);
// The same, without vector instructions.
void countBinsPlainly(const std::uint8_t *row, int x, int end, const Phases &first, BinCounts &counts);

}  // namespace riders::meter
