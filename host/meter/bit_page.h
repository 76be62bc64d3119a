// A page of one bit per pixel, as film recorders and plates use.
#pragma once

#include <cstddef>
#include <cstdint>

namespace riders::meter {

// Borrowed rows of bits: the caller keeps them alive. The leftmost pixel
// is the highest bit of a row's first byte; 1 is ink; row 0 is the top of the
// sheet. Bits past the width are never looked at.
struct BitPage {
    const std::uint8_t *bits = nullptr;
    int width = 0, height = 0;  // pixels
    std::size_t rowBytes = 0;   // (width + 7) / 8 or more
    double dpi = 0;             // pixels per inch, the same both ways

    const std::uint8_t *row(int y) const { return bits + static_cast<std::size_t>(y) * rowBytes; }
    bool at(int x, int y) const { return row(y)[x >> 3] >> (7 - (x & 7)) & 1; }
};

// A part of a page in pixels, from its upper left corner.
struct PageWindow {
    int left = 0, top = 0, width = 0, height = 0;
    bool empty() const { return width <= 0 || height <= 0; }
};

// The window without what lies outside the page.
PageWindow cutToPage(const BitPage &page, const PageWindow &window);
// The part in the window's middle with no side longer than `side`.
PageWindow middleOf(const PageWindow &window, int side);
// Pixels of ink from x to end - 1 in a row.
int inkInRow(const BitPage &page, int y, int x, int end);
// Share of ink, 0 to 1, in the part of the window that lies on the page; 0 for none.
double inkShare(const BitPage &page, const PageWindow &window);

}  // namespace riders::meter
