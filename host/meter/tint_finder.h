// Flat tints of a page, found by the ink of blocks of a tenth of an inch.
#pragma once

#include <vector>

#include "meter/bit_page.h"

namespace riders::meter {

// Flat tints of the page, from 1.5 to 98.5 % of ink, the largest first, 3
// inches a side at most, not overlapping. They are found by their ink alone, in
// tenths of an inch: text can slip in, and a window can reach that far over the
// edge of a tint of nearly the same ink. readScreen tries them in this order and
// trims what does not agree.
std::vector<PageWindow> findTints(const BitPage &page, int most = 8);

}  // namespace riders::meter
