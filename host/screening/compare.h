// From tones to dots: a row of a plate at a time.
#pragma once

#include <cstddef>
#include <cstdint>

#include "screening/thresholds.h"

namespace riders::screening {

// Screens `width` pixels that begin at column x of row y: from tones, 0 for no ink to 255 for all, to bits, the
// leftmost pixel in the highest bit, 1 for ink; the bits after the last pixel are 0. `bits` has room for
// (width + 7) / 8 bytes. Rows and parts of rows may come in any order and from several threads at once: the dots
// depend on their place alone.
void screenRow(const Thresholds &thresholds, std::int64_t x, std::int64_t y, const std::uint8_t *tones,
               std::size_t width, std::uint8_t *bits);

// The same bits from plain code. screenRow uses the processor's vector instructions where it has them.
void screenRowPlainly(const Thresholds &thresholds, std::int64_t x, std::int64_t y, const std::uint8_t *tones,
                      std::size_t width, std::uint8_t *bits);

}  // namespace riders::screening
