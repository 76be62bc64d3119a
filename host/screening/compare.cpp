#include "screening/compare.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

#include <algorithm>
#include <cstring>

namespace riders::screening {
namespace {

// Calls `compare` with the thresholds of each 32 pixels, from the left.
template <typename Compare>
void eachRun(const Thresholds &thresholds, std::int64_t x, std::int64_t y, std::size_t width, Compare compare)
{
    constexpr std::size_t kStep = 32;
    const std::uint8_t *row = thresholds.rowOf(y);
    const std::size_t length = thresholds.length();
    std::size_t place = thresholds.placeIn(x, y);
    for (std::size_t at = 0; at < width; at += kStep) {
        compare(row + place, at);
        place += kStep;
        while (place >= length)
            place -= length;
    }
}

void compareTail(const std::uint8_t *thresholds, const std::uint8_t *tones, std::size_t width, std::uint8_t *bits)
{
    std::memset(bits, 0, (width + 7) / 8);
    for (std::size_t i = 0; i < width; ++i)
        bits[i / 8] = static_cast<std::uint8_t>(bits[i / 8] | (tones[i] >= thresholds[i]) << (7 - i % 8));
}

#if defined(__x86_64__)

__attribute__((target("avx2"))) void screenRowInVectors(const Thresholds &thresholds, std::int64_t x,
                                                        std::int64_t y, const std::uint8_t *tones,
                                                        std::size_t width, std::uint8_t *bits)
{
    // movemask puts the first byte into the lowest bit; the leftmost pixel belongs into the highest.
    const __m256i turned = _mm256_setr_epi8(7, 6, 5, 4, 3, 2, 1, 0, 15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2,
                                            1, 0, 15, 14, 13, 12, 11, 10, 9, 8);
    const std::uint8_t *row = thresholds.rowOf(y);
    const std::size_t length = thresholds.length();
    std::size_t place = thresholds.placeIn(x, y), at = 0;
    for (; at + 32 <= width; at += 32) {
        const __m256i tone = _mm256_loadu_si256(reinterpret_cast<const __m256i *>(tones + at));
        const __m256i least = _mm256_loadu_si256(reinterpret_cast<const __m256i *>(row + place));
        const __m256i ink = _mm256_cmpeq_epi8(_mm256_max_epu8(tone, least), tone);
        const int mask = _mm256_movemask_epi8(_mm256_shuffle_epi8(ink, turned));
        std::memcpy(bits + at / 8, &mask, sizeof mask);
        place += 32;
        place -= place >= length ? length : 0;
    }
    if (at < width)
        compareTail(row + place, tones + at, width - at, bits + at / 8);
}

bool hasVectors()
{
    static const bool has = __builtin_cpu_supports("avx2");
    return has;
}

#endif

}  // namespace

void screenRowPlainly(const Thresholds &thresholds, std::int64_t x, std::int64_t y, const std::uint8_t *tones,
                      std::size_t width, std::uint8_t *bits)
{
    eachRun(thresholds, x, y, width, [&](const std::uint8_t *least, std::size_t at) {
        compareTail(least, tones + at, std::min<std::size_t>(32, width - at), bits + at / 8);
    });
}

void screenRow(const Thresholds &thresholds, std::int64_t x, std::int64_t y, const std::uint8_t *tones,
               std::size_t width, std::uint8_t *bits)
{
#if defined(__x86_64__)
    if (hasVectors())
        return screenRowInVectors(thresholds, x, y, tones, width, bits);
#endif
    screenRowPlainly(thresholds, x, y, tones, width, bits);
}

}  // namespace riders::screening
