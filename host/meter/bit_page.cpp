#include "meter/bit_page.h"

#include <algorithm>
#include <cstring>

namespace riders::meter {

namespace {

#if defined(__x86_64__)
#define RIDERS_COUNTS_BITS __attribute__((target("popcnt")))
bool countsBits()
{
    static const bool it = __builtin_cpu_supports("popcnt") != 0;
    return it;
}
#else
#define RIDERS_COUNTS_BITS
bool countsBits()
{
    return false;
}
#endif

// Inlined into its callers, and so made of what their processors can do.
[[gnu::always_inline]] inline int onesFrom(const std::uint8_t *row, int x, int end)
{
    const int first = x >> 3, last = end >> 3;
    const unsigned head = 0xffU >> (x & 7), tail = 0xff00U >> (end & 7) & 0xff;
    if (first == last)
        return __builtin_popcount(row[first] & head & tail);
    int ones = __builtin_popcount(row[first] & head);
    int at = first + 1;
    for (; at + 8 <= last; at += 8) {
        std::uint64_t word;
        std::memcpy(&word, row + at, 8);
        ones += __builtin_popcountll(word);
    }
    for (; at < last; ++at)
        ones += __builtin_popcount(row[at]);
    return tail ? ones + __builtin_popcount(row[last] & tail) : ones;
}

RIDERS_COUNTS_BITS int onesQuickly(const std::uint8_t *row, int x, int end)
{
    return onesFrom(row, x, end);
}

int onesAnywhere(const std::uint8_t *row, int x, int end)
{
    return onesFrom(row, x, end);
}

}  // namespace

PageWindow cutToPage(const BitPage &page, const PageWindow &window)
{
    // In 64 bits: a window may lie anywhere.
    const std::int64_t left = std::max(window.left, 0), top = std::max(window.top, 0);
    const std::int64_t right = std::min<std::int64_t>(std::int64_t(window.left) + window.width, page.width);
    const std::int64_t bottom = std::min<std::int64_t>(std::int64_t(window.top) + window.height, page.height);
    if (right <= left || bottom <= top)
        return {};
    return {int(left), int(top), int(right - left), int(bottom - top)};
}

PageWindow middleOf(const PageWindow &window, int side)
{
    const int width = std::min(side, window.width), height = std::min(side, window.height);
    return {window.left + (window.width - width) / 2, window.top + (window.height - height) / 2, width, height};
}

int inkInRow(const BitPage &page, int y, int x, int end)
{
    return countsBits() ? onesQuickly(page.row(y), x, end) : onesAnywhere(page.row(y), x, end);
}

double inkShare(const BitPage &page, const PageWindow &window)
{
    const PageWindow cut = cutToPage(page, window);
    if (cut.empty())
        return 0;
    std::int64_t ones = 0;
    for (int y = cut.top; y < cut.top + cut.height; ++y)
        ones += inkInRow(page, y, cut.left, cut.left + cut.width);
    return double(ones) / (double(cut.width) * cut.height);
}

}  // namespace riders::meter
