// A tile as a picture file.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "looking/pictures/ink_colours.h"

namespace riders::looking {

// What shares of ink, from 0 to 255, look like on white paper, as light is mixed.
using InkShades = std::array<Colour, 256>;
InkShades shadesOf(Colour ink);

// Shares of ink, row by row, `rowBytes` from one to the next.
struct TileShares {
    const std::uint8_t *first = nullptr;
    std::size_t rowBytes = 0;
    int width = 0, height = 0;
};

// The bytes of a PNG file, with as few bits a pixel as its shades need. Throws Refusal.
std::string tilePicture(const TileShares &shares, const InkShades &shades);

}  // namespace riders::looking
