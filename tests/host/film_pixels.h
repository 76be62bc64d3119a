// A film's marks as pixels, for tests that look at what is black.
#pragma once

#include <cstdint>
#include <vector>

#include "film/marks.h"

namespace film_tests {

using riders::film::PixelBox;

struct Pixels {
    std::int64_t columns = 0, rows = 0;
    std::vector<std::uint8_t> black;  // a byte a pixel, 0 or 1

    bool at(std::int64_t x, std::int64_t y) const { return black[static_cast<size_t>(y * columns + x)] != 0; }
    Pixels part(const PixelBox &box) const;
};

// All that the marks draw.
Pixels drawn(const riders::film::Sheet &sheet, const riders::film::PlateMarks &marks);

// The boxes of all shapes whose pixels hang together, corners included, from the top down.
std::vector<PixelBox> shapes(const Pixels &pixels);

}  // namespace film_tests
