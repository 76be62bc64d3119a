#include "film/film_rows.h"

#include <array>

namespace riders::film {
namespace {

std::array<std::uint8_t, 256> reversedBytes()
{
    std::array<std::uint8_t, 256> reversed{};
    for (unsigned byte = 0; byte < 256; ++byte)
        for (unsigned bit = 0; bit < 8; ++bit)
            reversed[byte] = static_cast<std::uint8_t>(reversed[byte] | (byte >> bit & 1) << (7 - bit));
    return reversed;
}

}  // namespace

void invertRow(std::uint8_t *bits, std::size_t columns)
{
    const std::size_t bytes = (columns + 7) / 8;
    for (std::size_t i = 0; i < bytes; ++i)
        bits[i] = static_cast<std::uint8_t>(~bits[i]);
    if (columns % 8 != 0)
        bits[bytes - 1] &= static_cast<std::uint8_t>(0xFF << (8 - columns % 8));
}

void mirrorRow(const std::uint8_t *bits, std::size_t columns, std::uint8_t *mirrored)
{
    static const std::array<std::uint8_t, 256> reversed = reversedBytes();
    const std::size_t bytes = (columns + 7) / 8;
    // The unused bits come first after turning; they are shifted out.
    const unsigned unused = static_cast<unsigned>(bytes * 8 - columns);
    for (std::size_t i = 0; i < bytes; ++i) {
        const unsigned here = reversed[bits[bytes - 1 - i]],
                       next = i + 1 < bytes ? reversed[bits[bytes - 2 - i]] : 0;
        mirrored[i] = static_cast<std::uint8_t>((here << 8 | next) >> (8 - unused));
    }
}

}  // namespace riders::film
