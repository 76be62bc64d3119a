#include "film/printing/placed_row.h"

#include <algorithm>

namespace riders::printing {

PlacedRow::PlacedRow(std::size_t filmColumns, std::size_t columns, long x)
    : filmBytes_(static_cast<long>((filmColumns + 7) / 8)), x_(x),
      lastMask_(static_cast<std::uint8_t>(columns % 8 == 0 ? 0xff : 0xff << (8 - columns % 8))),
      row_((columns + 7) / 8)
{
}

const std::vector<std::uint8_t> &PlacedRow::place(const std::uint8_t *film)
{
    if (!film || row_.empty()) {
        std::fill(row_.begin(), row_.end(), std::uint8_t(0));
        return row_;
    }
    const auto byteOf = [&](long index) -> unsigned {
        return index >= 0 && index < filmBytes_ ? film[index] : 0U;
    };
    // Eight pixels of the film from the one that lies at the byte's first, which is on two bytes of it.
    const long first = x_ <= 0 ? -x_ / 8 : -((x_ + 7) / 8);
    const unsigned shift = static_cast<unsigned>(-x_ - first * 8);
    for (std::size_t i = 0; i < row_.size(); ++i) {
        const long from = first + static_cast<long>(i);
        row_[i] = static_cast<std::uint8_t>((byteOf(from) << 8 | byteOf(from + 1)) >> (8 - shift));
    }
    row_.back() &= lastMask_;
    return row_;
}

void widen(const std::vector<std::uint8_t> &bits, std::vector<std::uint8_t> &bytes)
{
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = bits[i / 8] >> (7 - i % 8) & 1 ? 0xff : 0;
}

}  // namespace riders::printing
