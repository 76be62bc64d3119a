#include "pictures/comparison.h"

#include <algorithm>
#include <cstdio>
#include <optional>

namespace {

std::optional<std::uint32_t> pixelOf(const toolbox::Picture &picture, int h, int v)
{
    if (h >= picture.width || v >= picture.height)
        return std::nullopt;
    return picture.pixels[static_cast<std::size_t>(v) * static_cast<std::size_t>(picture.width) +
                          static_cast<std::size_t>(h)];
}

// Three quarters of the way to white.
std::uint32_t pale(std::uint32_t pixel)
{
    return 0xC0C0C0 + ((pixel >> 2) & 0x3F3F3F);
}

std::string colour(std::uint32_t pixel)
{
    char text[16];
    std::snprintf(text, sizeof text, "0x%06X", static_cast<unsigned>(pixel & 0xFFFFFF));
    return text;
}

std::string size(int width, int height)
{
    return std::to_string(width) + "x" + std::to_string(height);
}

}  // namespace

PictureDifference comparison(const toolbox::Picture &expected, const toolbox::Picture &actual)
{
    PictureDifference found;
    found.expectedWidth = expected.width;
    found.expectedHeight = expected.height;
    found.actualWidth = actual.width;
    found.actualHeight = actual.height;
    bool placed = false;
    for (int v = 0; v < std::max(expected.height, actual.height); ++v)
        for (int h = 0; h < std::max(expected.width, actual.width); ++h) {
            auto kept = pixelOf(expected, h, v), now = pixelOf(actual, h, v);
            if (kept == now)
                continue;
            ++found.pixels;
            if (placed || !kept || !now)
                continue;
            placed = true;
            found.h = h;
            found.v = v;
            found.expected = *kept;
            found.actual = *now;
        }
    return found;
}

std::string PictureDifference::text() const
{
    if (same())
        return "no pixel differs";
    std::string words;
    if (!sameSize())
        words = "kept " + size(expectedWidth, expectedHeight) + ", now " + size(actualWidth, actualHeight) + "; ";
    const int all = std::max(expectedWidth, actualWidth) * std::max(expectedHeight, actualHeight);
    words += std::to_string(pixels) + " of " + std::to_string(all) + " pixels differ";
    if (expected != actual)
        words += ", the first at " + std::to_string(h) + "," + std::to_string(v) + ": kept " + colour(expected) +
                 ", now " + colour(actual);
    return words;
}

toolbox::Picture differencePicture(const toolbox::Picture &expected, const toolbox::Picture &actual)
{
    constexpr std::uint32_t red = 0xFF0000;
    toolbox::Picture picture{std::max(expected.width, actual.width), std::max(expected.height, actual.height), {}};
    for (int v = 0; v < picture.height; ++v)
        for (int h = 0; h < picture.width; ++h) {
            auto kept = pixelOf(expected, h, v), now = pixelOf(actual, h, v);
            picture.pixels.push_back(kept && kept == now ? pale(*kept) : red);
        }
    return picture;
}
