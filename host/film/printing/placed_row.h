// A film's row on a row of the sheet.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace riders::printing {

// Rows have 8 pixels in a byte, the leftmost in the highest bit, 1 is black.
class PlacedRow {
public:
    // The film's leftmost pixel is at x on a row of so many pixels; what lies beyond is cut off.
    PlacedRow(std::size_t filmColumns, std::size_t columns, long x);

    // The whole row; nullptr for one beside the film. Valid until the next call.
    const std::vector<std::uint8_t> &place(const std::uint8_t *film);

private:
    const long filmBytes_, x_;
    const std::uint8_t lastMask_;
    std::vector<std::uint8_t> row_;
};

// A byte for each pixel: 255 where it is set, 0 where it is not.
void widen(const std::vector<std::uint8_t> &bits, std::vector<std::uint8_t> &bytes);

}  // namespace riders::printing
