#include "meter/ink_of_columns.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

#include <algorithm>
#include <cstring>

namespace riders::meter {

namespace {

constexpr int kMostRows = 31;  // of 8 ones each, in a byte

void addTail(const std::uint8_t *row, std::size_t bytes, std::uint8_t *counts)
{
    for (std::size_t i = 0; i < bytes; ++i)
        counts[i] = static_cast<std::uint8_t>(counts[i] + __builtin_popcount(row[i]));
}

#if defined(__x86_64__)

// Each half of a byte is looked up in a table of sixteen.
__attribute__((target("avx2"))) void addOnesInVectors(const std::uint8_t *row, std::size_t bytes,
                                                      std::uint8_t *counts)
{
    const __m256i ones = _mm256_setr_epi8(0, 1, 1, 2, 1, 2, 2, 3, 1, 2, 2, 3, 2, 3, 3, 4, 0, 1, 1, 2, 1, 2, 2, 3,
                                          1, 2, 2, 3, 2, 3, 3, 4);
    const __m256i low = _mm256_set1_epi8(15);
    std::size_t at = 0;
    for (; at + 32 <= bytes; at += 32) {
        const __m256i pixels = _mm256_loadu_si256(reinterpret_cast<const __m256i *>(row + at));
        auto *to = reinterpret_cast<__m256i *>(counts + at);
        const __m256i right = _mm256_shuffle_epi8(ones, _mm256_and_si256(pixels, low));
        const __m256i left = _mm256_shuffle_epi8(ones, _mm256_and_si256(_mm256_srli_epi16(pixels, 4), low));
        _mm256_storeu_si256(to, _mm256_add_epi8(_mm256_loadu_si256(to), _mm256_add_epi8(right, left)));
    }
    addTail(row + at, bytes - at, counts + at);
}

bool hasVectors()
{
    static const bool has = __builtin_cpu_supports("avx2") != 0;
    return has;
}

#endif

// Ink of whole bytes, and to the left of the places where a column begins within a byte.
class ByteCounts {
public:
    ByteCounts(int columns, int width)
        : width_(width), bytes_((static_cast<std::size_t>(columns) * static_cast<std::size_t>(width) + 7) / 8),
          rows_(bytes_), all_(bytes_), before_(static_cast<std::size_t>(columns) + 1)
    {
    }

    void add(const std::uint8_t *row)
    {
        addOnes(row, bytes_, rows_.data());
        if (++added_ == kMostRows)
            flush();
        if (width_ % 8 != 0)
            for (std::size_t column = 0; column < before_.size(); ++column)
                if (const unsigned mask = 0xff00U >> (place(column) & 7) & 0xff)
                    before_[column] += __builtin_popcount(row[place(column) >> 3] & mask);
    }

    std::vector<std::int64_t> columns()
    {
        flush();
        std::vector<std::int64_t> ink;
        for (std::size_t column = 0; column + 1 < before_.size(); ++column) {
            std::int64_t sum = before_[column + 1] - before_[column];
            for (std::size_t i = place(column) >> 3; i < place(column + 1) >> 3; ++i)
                sum += all_[i];
            ink.push_back(sum);
        }
        return ink;
    }

private:
    std::size_t place(std::size_t column) const { return column * static_cast<std::size_t>(width_); }

    void flush()
    {
        for (std::size_t i = 0; i < bytes_; ++i)
            all_[i] += rows_[i];
        std::fill(rows_.begin(), rows_.end(), std::uint8_t{0});
        added_ = 0;
    }

    int width_, added_ = 0;
    std::size_t bytes_;
    std::vector<std::uint8_t> rows_;  // of the rows added last
    std::vector<std::uint32_t> all_;
    std::vector<std::int64_t> before_;
};

}  // namespace

void addOnesPlainly(const std::uint8_t *row, std::size_t bytes, std::uint8_t *counts)
{
    constexpr std::uint64_t k1 = 0x5555555555555555, k2 = 0x3333333333333333, k4 = 0x0f0f0f0f0f0f0f0f;
    std::size_t at = 0;
    for (; at + 8 <= bytes; at += 8) {
        std::uint64_t pixels, sums;
        std::memcpy(&pixels, row + at, 8);
        std::memcpy(&sums, counts + at, 8);
        pixels -= pixels >> 1 & k1;
        pixels = (pixels & k2) + (pixels >> 2 & k2);
        sums += (pixels + (pixels >> 4)) & k4;
        std::memcpy(counts + at, &sums, 8);
    }
    addTail(row + at, bytes - at, counts + at);
}

void addOnes(const std::uint8_t *row, std::size_t bytes, std::uint8_t *counts)
{
#if defined(__x86_64__)
    if (hasVectors())
        return addOnesInVectors(row, bytes, counts);
#endif
    addOnesPlainly(row, bytes, counts);
}

std::vector<std::int64_t> inkOfColumns(const BitPage &page, int columns, int width, int top, int bottom)
{
    ByteCounts counts(columns, width);
    for (int y = top; y < bottom; ++y)
        counts.add(page.row(y));
    return counts.columns();
}

}  // namespace riders::meter
