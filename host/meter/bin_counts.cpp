#include "meter/bin_counts.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

#include <algorithm>

namespace riders::meter {

namespace {

constexpr unsigned kInk = kBins * kBins;  // to the place of a bin's inked pixels

#if defined(__x86_64__)

// The places of eight pixels are worked out at once; x is a multiple of eight.
__attribute__((target("avx2"))) void countBytes(const std::uint8_t *row, int x, int end, const Phases &first,
                                                BinCounts &counts)
{
    const __m256i lanes = _mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7);
    const __m256i bits = _mm256_setr_epi32(0x80, 0x40, 0x20, 0x10, 8, 4, 2, 1);
    const __m256i rows = _mm256_set1_epi32((kBins - 1) << kBinBits), ink = _mm256_set1_epi32(int(kInk));
    const auto startAt = [&](std::uint32_t phase, std::uint32_t step) __attribute__((target("avx2")))
    {
        return _mm256_add_epi32(_mm256_set1_epi32(int(phase)),
                                _mm256_mullo_epi32(lanes, _mm256_set1_epi32(int(step))));
    };
    __m256i u = startAt(first.u, first.stepU), v = startAt(first.v, first.stepV);
    const __m256i stepU = _mm256_set1_epi32(int(first.stepU * 8)), stepV = _mm256_set1_epi32(int(first.stepV * 8));
    alignas(32) std::uint32_t places[8];
    for (; x < end; x += 8) {
        const __m256i white =
            _mm256_cmpeq_epi32(_mm256_and_si256(_mm256_set1_epi32(row[x >> 3]), bits), _mm256_setzero_si256());
        const __m256i bin = _mm256_or_si256(_mm256_srli_epi32(u, 32 - kBinBits),
                                            _mm256_and_si256(_mm256_srli_epi32(v, 32 - 2 * kBinBits), rows));
        _mm256_store_si256(reinterpret_cast<__m256i *>(places),
                           _mm256_or_si256(bin, _mm256_andnot_si256(white, ink)));
#pragma GCC unroll 8
        for (const std::uint32_t place : places)
            ++counts[place];
        u = _mm256_add_epi32(u, stepU), v = _mm256_add_epi32(v, stepV);
    }
}

bool countsInVectors()
{
    static const bool does = __builtin_cpu_supports("avx2") != 0;
    return does;
}

Phases after(const Phases &first, int pixels)
{
    const auto count = static_cast<std::uint32_t>(pixels);
    return {first.u + count * first.stepU, first.v + count * first.stepV, first.stepU, first.stepV};
}

#endif

}  // namespace

void countBinsPlainly(const std::uint8_t *row, int x, int end, const Phases &first, BinCounts &counts)
{
    std::uint32_t u = first.u, v = first.v;
    // A byte of pixels at a time, the next of them in its highest bit.
    while (x < end) {
        unsigned bits = unsigned(row[x >> 3]) << (x & 7);
        for (const int last = std::min(end, (x | 7) + 1); x < last;
             ++x, bits <<= 1, u += first.stepU, v += first.stepV)
            ++counts[binOf(u, v) + (bits & 0x80) * (kInk / 0x80)];
    }
}

void countBins(const std::uint8_t *row, int x, int end, const Phases &first, BinCounts &counts)
{
#if defined(__x86_64__)
    const int whole = (x + 7) & ~7, last = end & ~7;
    if (whole < last && countsInVectors()) {
        countBinsPlainly(row, x, whole, first, counts);
        countBytes(row, whole, last, after(first, whole - x), counts);
        return countBinsPlainly(row, last, end, after(first, last - x), counts);
    }
#endif
    countBinsPlainly(row, x, end, first, counts);
}

}  // namespace riders::meter
