// What a TIFF says of a plate of one bit a pixel.
#pragma once

#include <cstdint>

struct tiff;  // libtiff's TIFF

namespace riders::plates {

// One strip, white is 0, the leftmost pixel in the highest bit; dots per inch. To be called before anything is
// written; the caller sets the compression.
void describeBits(::tiff *out, std::uint32_t columns, std::uint32_t rows, double across, double down);

}  // namespace riders::plates
