#include "looking/pictures/png_file.h"

#include <errno.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <memory>

#include "io/refusal.h"
#include "libpng/libpng.h"

namespace riders::looking {
namespace {

using riders::png::libpng;

static_assert(sizeof(Colour) == 3 && sizeof(png_color) == 3);

struct ClosePng {
    void operator()(FILE *file) const
    {
        if (file)
            fclose(file);
    }
};

// A picture of few colours as indices into a list of them, which takes a fraction of the time and space.
struct Indexed {
    std::vector<Colour> colours;        // empty when there are too many
    std::vector<std::uint8_t> numbers;  // packed; each row begins a new byte
    int bits = 8;                       // of a number
    size_t rowBytes = 0;
};

constexpr size_t kMostColours = 256;

// Colours in the order in which they come, found again by a table with room for sixteen times as many.
class ColourNumbers {
public:
    // The number of the colour; kMostColours when there are too many.
    size_t of(Colour colour, std::vector<Colour> &colours)
    {
        const std::uint32_t key = colour.red | colour.green << 8 | colour.blue << 16;
        for (std::uint32_t slot = key * 2654435761U >> 20;; slot = (slot + 1) % places_.size()) {
            if (places_[slot] == 0) {
                if (colours.size() == kMostColours)
                    return kMostColours;
                colours.push_back(colour);
                places_[slot] = static_cast<std::uint16_t>(colours.size());
            }
            if (colours[places_[slot] - 1U] == colour)
                return places_[slot] - 1U;
        }
    }

private:
    std::array<std::uint16_t, 4096> places_{};  // a colour's number and 1; 0 for none
};

// Puts the numbers of a row into as few bits as they need.
void pack(const std::uint8_t *numbers, size_t count, int bits, std::uint8_t *row)
{
    const size_t inByte = 8 / static_cast<size_t>(bits);
    for (size_t x = 0; x < count; x += inByte) {
        unsigned byte = 0;
        for (size_t i = 0; i < inByte; ++i)
            byte = byte << bits | (x + i < count ? numbers[x + i] : 0U);
        *row++ = static_cast<std::uint8_t>(byte);
    }
}

Indexed indexed(const Picture &picture)
{
    Indexed small;
    ColourNumbers known;
    std::vector<std::uint8_t> all;
    all.reserve(picture.pixels.size());
    size_t number = 0;
    for (const Colour &colour : picture.pixels) {
        if (small.colours.empty() || !(small.colours[number] == colour))
            number = known.of(colour, small.colours);
        if (number == kMostColours)
            return {};
        all.push_back(static_cast<std::uint8_t>(number));
    }
    const auto width = static_cast<size_t>(picture.width);
    small.bits = small.colours.size() <= 2 ? 1 : small.colours.size() <= 16 ? 4 : 8;
    const size_t inByte = 8 / static_cast<size_t>(small.bits);
    small.rowBytes = (width + inByte - 1) / inByte;
    small.numbers.resize(small.rowBytes * static_cast<size_t>(picture.height));
    for (size_t y = 0; y < static_cast<size_t>(picture.height); ++y)
        pack(all.data() + y * width, width, small.bits, small.numbers.data() + y * small.rowBytes);
    return small;
}

void setKind(png_structp png, png_infop info, const Picture &picture, const Indexed &small)
{
    const bool few = !small.colours.empty();
    libpng().setHeader(png, info, static_cast<png_uint_32>(picture.width),
                       static_cast<png_uint_32>(picture.height), small.bits,
                       few ? PNG_COLOR_TYPE_PALETTE : PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                       PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (few)
        libpng().setPalette(png, info, reinterpret_cast<png_const_colorp>(small.colours.data()),
                            static_cast<int>(small.colours.size()));
}

// Nothing with a destructor may be created in here: libpng leaves by longjmp.
bool writeRows(png_structp png, png_infop info, FILE *file, const Picture &picture, const Indexed &small,
               double dpi)
{
    if (setjmp(*libpng().setLongjmp(png, longjmp,
                                    sizeof(jmp_buf))))  // NOLINT(cert-err52-cpp): how libpng reports errors
        return false;
    libpng().initIo(png, file);
    setKind(png, info, picture, small);
    const auto perMetre = static_cast<png_uint_32>(std::lround(dpi / 0.0254));
    libpng().setResolution(png, info, perMetre, perMetre, PNG_RESOLUTION_METER);
    libpng().setFilter(png, 0, PNG_FILTER_NONE);
    libpng().setCompressionLevel(png, 4);
    libpng().writeInfo(png, info);
    const auto *rows =
        small.colours.empty() ? reinterpret_cast<png_const_bytep>(picture.pixels.data()) : small.numbers.data();
    const size_t rowBytes =
        small.colours.empty() ? sizeof(Colour) * static_cast<size_t>(picture.width) : small.rowBytes;
    for (int y = 0; y < picture.height; ++y)
        libpng().writeRow(png, rows + static_cast<size_t>(y) * rowBytes);
    libpng().writeEnd(png, info);
    return true;
}

}  // namespace

void writePicture(const std::filesystem::path &file, const Picture &picture, double dpi)
{
    const std::unique_ptr<FILE, ClosePng> out(std::fopen(file.c_str(), "wb"));
    if (!out)
        io::refuseErrno(file, errno);
    const Indexed small = indexed(picture);
    png_structp png = libpng().createWriteStruct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png ? libpng().createInfoStruct(png) : nullptr;
    const bool written =
        info && writeRows(png, info, out.get(), picture, small, dpi) && std::fflush(out.get()) == 0;
    libpng().destroyWriteStruct(&png, &info);
    if (!written)
        throw io::Refusal(file.string() + ": cannot be written; is the disk full?");
}

}  // namespace riders::looking
