#include "pngpixels.h"

#include <png.h>

#include <cstring>

namespace rescomp {
namespace {

// Four bytes per pixel must fit the picture format's row length.
constexpr png_uint_32 mostAcross = 4095;
constexpr png_uint_32 mostDown = 16383;

// Frees what libpng holds, however the reading ends.
struct Image {
    png_image png;
    Image()
    {
        std::memset(&png, 0, sizeof png);
        png.version = PNG_IMAGE_VERSION;
    }
    ~Image() { png_image_free(&png); }
    Image(const Image &) = delete;
    Image &operator=(const Image &) = delete;
};

}  // namespace

Pixels pixelsOf(const std::string &bytes, const Place &place)
{
    Image image;
    if (!png_image_begin_read_from_memory(&image.png, bytes.data(), bytes.size()))
        throw SourceError(place, std::string("the picture is no PNG file: ") + image.png.message);
    if (image.png.width > mostAcross || image.png.height > mostDown)
        throw SourceError(place, "the picture is larger than 4095 by 16383 pixels");
    image.png.format = PNG_FORMAT_RGB;
    Pixels pixels;
    pixels.width = static_cast<int>(image.png.width);
    pixels.height = static_cast<int>(image.png.height);
    pixels.rows.resize(static_cast<std::size_t>(image.png.width) * image.png.height);
    static_assert(sizeof(Pixel) == 3);
    const png_color white = {255, 255, 255};
    if (!png_image_finish_read(&image.png, &white, pixels.rows.data(), 0, nullptr))
        throw SourceError(place, std::string("the picture is damaged: ") + image.png.message);
    return pixels;
}

}  // namespace rescomp
