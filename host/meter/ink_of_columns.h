// Counts ink in many columns of a page at once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "meter/bit_page.h"

namespace riders::meter {

// Adds to each count the ones of its byte: at most 31 rows can be added before a count is full.
void addOnes(const std::uint8_t *row, std::size_t bytes, std::uint8_t *counts);
// The same, without vector instructions.
void addOnesPlainly(const std::uint8_t *row, std::size_t bytes, std::uint8_t *counts);

// Pixels of ink of columns, each `width` pixels wide, in rows from top to bottom - 1; the first column begins at
// the page's left edge, and all of them lie on the page.
std::vector<std::int64_t> inkOfColumns(const BitPage &page, int columns, int width, int top, int bottom);

}  // namespace riders::meter
