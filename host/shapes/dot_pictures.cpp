#include "shapes/dot_pictures.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <new>

#include "libpng/libpng.h"

namespace riders::shapes {
namespace {

// A pixel's grey is what so many samples in it have, in each direction.
constexpr int kPartsASide = 3;

bool isInked(const Growth &growth, double x, double y, double tint)
{
    const auto sample = [](double along) {
        const double part = along - static_cast<int>(along);
        return static_cast<std::size_t>(std::min(kSide - 1, static_cast<int>(part * kSide)));
    };
    return growth[(kSide - 1 - sample(y)) * kSide + sample(x)] <= tint;
}

std::uint8_t greyAt(const Growth &growth, const DotPicture &picture, int left, int top)
{
    const double width = picture.columns * picture.cellPixels;
    int paper = 0;
    for (int part = 0; part < kPartsASide * kPartsASide; ++part) {
        const double x = left + (part % kPartsASide + 0.5) / kPartsASide,
                     y = top + (part / kPartsASide + 0.5) / kPartsASide;
        const double tint = picture.leftTint + (picture.rightTint - picture.leftTint) * x / width;
        paper += !isInked(growth, x / picture.cellPixels, y / picture.cellPixels, tint);
    }
    return static_cast<std::uint8_t>(255 * paper / (kPartsASide * kPartsASide));
}

}  // namespace

std::string dotPicture(const Growth &growth, const DotPicture &picture)
{
    const int width = picture.columns * picture.cellPixels, height = picture.rows * picture.cellPixels;
    std::vector<std::uint8_t> pixels;
    pixels.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            pixels.push_back(greyAt(growth, picture, x, y));
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.format = PNG_FORMAT_GRAY;
    image.width = static_cast<png_uint_32>(width);
    image.height = static_cast<png_uint_32>(height);
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
    std::string file(size, '\0');
    if (!png::libpng().writeToMemory(&image, file.data(), &size, 0, pixels.data(), 0, nullptr))
        throw std::bad_alloc();
    file.resize(size);
    return file;
}

std::string asAddress(const std::string &png)
{
    constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string address = "data:image/png;base64,";
    for (std::size_t at = 0; at < png.size(); at += 3) {
        const std::size_t count = std::min<std::size_t>(3, png.size() - at);
        std::uint32_t bits = 0;
        for (std::size_t i = 0; i < 3; ++i)
            bits = bits << 8 | (i < count ? static_cast<unsigned char>(png[at + i]) : 0U);
        for (std::size_t digit = 0; digit < 4; ++digit)
            address += digit <= count ? kDigits[bits >> (18 - 6 * digit) & 63] : '=';
    }
    return address;
}

}  // namespace riders::shapes
