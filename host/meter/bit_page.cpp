#include "meter/bit_page.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace riders::meter {

namespace {

int onesIn(const std::uint8_t *bytes, int count)
{
    int ones = 0;
    for (; count >= 8; count -= 8, bytes += 8) {
        std::uint64_t word;
        std::memcpy(&word, bytes, 8);
        ones += std::popcount(word);
    }
    for (; count > 0; --count, ++bytes)
        ones += std::popcount(*bytes);
    return ones;
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
    const std::uint8_t *row = page.row(y);
    const int first = x >> 3, last = end >> 3;
    const unsigned head = 0xffU >> (x & 7), tail = 0xff00U >> (end & 7) & 0xff;
    if (first == last)
        return std::popcount(row[first] & head & tail);
    const int ones = std::popcount(row[first] & head) + onesIn(row + first + 1, last - first - 1);
    return tail ? ones + std::popcount(row[last] & tail) : ones;
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
