// Pixels of four plates taken apart.
#pragma once

#include <cstddef>
#include <cstdint>

namespace riders::plates {

// From `columns` pixels of four bytes each to `columns` bytes on each plate.
void dealRow(const std::uint8_t *pixels, std::size_t columns, std::uint8_t *const (&plates)[4]);

// What is 255 for no ink and 0 for all becomes the opposite.
void invertTones(std::uint8_t *tones, std::size_t count);

}  // namespace riders::plates
