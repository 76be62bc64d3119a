// Rows of a finished film, turned into what the recorder is to expose.
#pragma once

#include <cstddef>
#include <cstdint>

namespace riders::film {

// Rows are `columns` pixels, the leftmost in the highest bit of the first byte, the bits after the last pixel 0;
// what is made has the same form.

// Black for white.
void invertRow(std::uint8_t *bits, std::size_t columns);
// The last pixel first. The two may not overlap.
void mirrorRow(const std::uint8_t *bits, std::size_t columns, std::uint8_t *mirrored);

}  // namespace riders::film
