#include "looking/tiles/tile_picture.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

#include "io/refusal.h"
#include "libpng/libpng.h"
#include "looking/pictures/linear_light.h"

namespace riders::looking {
namespace {

using riders::png::libpng;

// The shades that a tile has.
struct FewShades {
    std::array<std::uint8_t, 256> number{};  // of a share among them
    std::array<png_color, 256> colours{};
    int count = 0, bits = 8;
};

FewShades fewShades(const TileShares &shares, const InkShades &shades)
{
    std::array<bool, 256> there{};
    for (int y = 0; y < shares.height; ++y) {
        const std::uint8_t *row = shares.first + static_cast<std::size_t>(y) * shares.rowBytes;
        for (int x = 0; x < shares.width; ++x)
            there[row[x]] = true;
    }
    FewShades few;
    for (std::size_t share = 0; share < there.size(); ++share)
        if (there[share]) {
            const Colour colour = shades[share];
            few.number[share] = static_cast<std::uint8_t>(few.count);
            few.colours[static_cast<std::size_t>(few.count++)] = {colour.red, colour.green, colour.blue};
        }
    few.bits = few.count <= 2 ? 1 : few.count <= 4 ? 2 : few.count <= 16 ? 4 : 8;
    return few;
}

// As numbers of as many bits as they need; rows begin with a byte.
std::vector<std::uint8_t> packed(const TileShares &shares, const FewShades &few, std::size_t rowBytes)
{
    const int inByte = 8 / few.bits;
    std::vector<std::uint8_t> bytes(rowBytes * static_cast<std::size_t>(shares.height));
    for (int y = 0; y < shares.height; ++y) {
        const std::uint8_t *row = shares.first + static_cast<std::size_t>(y) * shares.rowBytes;
        std::uint8_t *out = bytes.data() + static_cast<std::size_t>(y) * rowBytes;
        for (int x = 0; x < shares.width; ++x)
            out[x / inByte] |=
                static_cast<std::uint8_t>(few.number[row[x]] << (8 - few.bits - x % inByte * few.bits));
    }
    return bytes;
}

// Nothing with a destructor may be created in here: libpng leaves by longjmp.
bool writePng(png_structp png, png_infop info, FILE *out, const TileShares &shares, const FewShades &few,
              const std::uint8_t *rows, std::size_t rowBytes)
{
    if (setjmp(*libpng().setLongjmp(png, longjmp,
                                    sizeof(jmp_buf))))  // NOLINT(cert-err52-cpp): how libpng reports errors
        return false;
    libpng().initIo(png, out);
    libpng().setHeader(png, info, static_cast<png_uint_32>(shares.width), static_cast<png_uint_32>(shares.height),
                       few.bits, PNG_COLOR_TYPE_PALETTE, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                       PNG_FILTER_TYPE_DEFAULT);
    libpng().setPalette(png, info, few.colours.data(), few.count);
    libpng().setFilter(png, 0, PNG_FILTER_NONE);
    libpng().setCompressionLevel(png, 2);
    libpng().writeInfo(png, info);
    for (int y = 0; y < shares.height; ++y)
        libpng().writeRow(png, rows + static_cast<std::size_t>(y) * rowBytes);
    libpng().writeEnd(png, info);
    return true;
}

}  // namespace

InkShades shadesOf(Colour ink)
{
    const Light light = lightOf(ink);
    InkShades shades;
    for (std::size_t share = 0; share < shades.size(); ++share) {
        const float inked = static_cast<float>(share) / 255, bare = 1 - inked;
        shades[share] =
            colourOf({bare + inked * light.red, bare + inked * light.green, bare + inked * light.blue});
    }
    return shades;
}

std::string tilePicture(const TileShares &shares, const InkShades &shades)
{
    const FewShades few = fewShades(shares, shades);
    const std::size_t rowBytes = (static_cast<std::size_t>(shares.width) * few.bits + 7) / 8;
    const std::vector<std::uint8_t> rows = packed(shares, few, rowBytes);
    char *bytes = nullptr;
    std::size_t size = 0;
    FILE *out = open_memstream(&bytes, &size);
    png_structp png = out ? libpng().createWriteStruct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr) : nullptr;
    png_infop info = png ? libpng().createInfoStruct(png) : nullptr;
    const bool written = info && writePng(png, info, out, shares, few, rows.data(), rowBytes);
    libpng().destroyWriteStruct(&png, &info);
    const bool whole = out && std::fclose(out) == 0 && written;
    const std::unique_ptr<char, decltype(&std::free)> kept(bytes, std::free);
    if (!whole)
        throw io::Refusal("there is not enough memory for a picture");
    return {kept.get(), size};
}

}  // namespace riders::looking
