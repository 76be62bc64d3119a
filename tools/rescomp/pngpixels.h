// A PNG file's pixels.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "source.h"

namespace rescomp {

struct Pixel {
    std::uint8_t red = 0, green = 0, blue = 0;
    // NOLINTNEXTLINE(modernize-use-nullptr): takes the 0 it is compared with for a pointer
    auto operator<=>(const Pixel &) const = default;
};

struct Pixels {
    int width = 0;
    int height = 0;
    std::vector<Pixel> rows;   // top row first, left pixel first

    const Pixel &at(int h, int v) const { return rows[static_cast<std::size_t>(v) * width + h]; }
};

// What is transparent becomes white. Throws SourceError for place.
Pixels pixelsOf(const std::string &png, const Place &place);

}  // namespace rescomp
