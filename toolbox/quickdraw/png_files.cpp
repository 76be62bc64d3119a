#include <png.h>

#include "toolbox/host/picture.h"
#include "toolbox/host/shared_library.h"

namespace toolbox {
namespace {

// Loaded when the first picture of the display is written or read.
struct Libpng {
    SharedLibrary library{"libpng16.so.16", "libpng16-16"};

    decltype(&::png_image_write_to_file) writeToFile = library("png_image_write_to_file");
    decltype(&::png_image_begin_read_from_file) beginReading = library("png_image_begin_read_from_file");
    decltype(&::png_image_finish_read) finishReading = library("png_image_finish_read");
    decltype(&::png_image_free) free = library("png_image_free");
};

const Libpng &libpng()
{
    static const Libpng library;
    return library;
}

png_image rgbImage(int width, int height)
{
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.format = PNG_FORMAT_RGB;
    image.width = static_cast<png_uint_32>(width);
    image.height = static_cast<png_uint_32>(height);
    return image;
}

}  // namespace

bool writePng(const std::filesystem::path &path, const Picture &picture)
{
    std::vector<std::uint8_t> bytes;
    bytes.reserve(picture.pixels.size() * 3);
    for (std::uint32_t pixel : picture.pixels)
        for (int shift : {16, 8, 0})
            bytes.push_back(static_cast<std::uint8_t>(pixel >> shift));
    png_image image = rgbImage(picture.width, picture.height);
    if (libpng().writeToFile(&image, path.c_str(), 0, bytes.data(), 0, nullptr))
        return true;
    libpng().free(&image);
    return false;
}

Picture readPng(const std::filesystem::path &path)
{
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (!libpng().beginReading(&image, path.c_str()))
        return {};
    image.format = PNG_FORMAT_RGB;
    std::vector<std::uint8_t> bytes(PNG_IMAGE_SIZE(image));
    const png_color white{255, 255, 255};
    if (!libpng().finishReading(&image, &white, bytes.data(), 0, nullptr))
        return {};
    Picture picture{static_cast<int>(image.width), static_cast<int>(image.height), {}};
    for (std::size_t i = 0; i + 2 < bytes.size(); i += 3)
        picture.pixels.push_back(std::uint32_t(bytes[i]) << 16 | bytes[i + 1] << 8 | bytes[i + 2]);
    return picture;
}

}  // namespace toolbox
