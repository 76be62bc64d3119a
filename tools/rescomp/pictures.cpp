#include <map>
#include <optional>

#include "emitters.h"
#include "packbits.h"
#include "pngpixels.h"
#include "toolbox/host/big_bytes.h"

namespace rescomp {

using namespace toolbox;

namespace {

constexpr std::uint32_t seventyTwoDpi = 0x00480000;
constexpr std::uint32_t pixelMapBit = 0x8000;
constexpr std::size_t mostColors = 256;

// The number of each colour in an indexed picture.
using Palette = std::map<Pixel, int>;

std::optional<Palette> paletteOf(const Pixels &pixels)
{
    Palette palette;
    for (const Pixel &pixel : pixels.rows) {
        palette.try_emplace(pixel, 0);
        if (palette.size() > mostColors)
            return std::nullopt;
    }
    int next = 0;
    for (auto &[pixel, number] : palette)
        number = next++;
    return palette;
}

int bitsFor(std::size_t colors)
{
    for (int bits : {1, 2, 4})
        if (colors <= std::size_t{1} << bits)
            return bits;
    return 8;
}

void appendFrame(std::string &bytes, const Pixels &pixels)
{
    appendLong(bytes, 0);
    appendWord(bytes, static_cast<std::uint32_t>(pixels.height));
    appendWord(bytes, static_cast<std::uint32_t>(pixels.width));
}

struct PixelMap {
    std::uint32_t rowBytes, packType, pixelType, pixelSize, components, componentSize;
};

void appendPixelMap(std::string &bytes, const Pixels &pixels, const PixelMap &map)
{
    appendWord(bytes, map.rowBytes | pixelMapBit);
    appendFrame(bytes, pixels);
    appendWord(bytes, 0);
    appendWord(bytes, map.packType);
    appendLong(bytes, 0);
    appendLong(bytes, seventyTwoDpi);
    appendLong(bytes, seventyTwoDpi);
    for (std::uint32_t word : {map.pixelType, map.pixelSize, map.components, map.componentSize})
        appendWord(bytes, word);
    bytes.append(12, '\0');
}

void appendColors(std::string &bytes, const Palette &palette)
{
    appendLong(bytes, 0);
    appendWord(bytes, 0);
    appendWord(bytes, static_cast<std::uint32_t>(palette.size() - 1));
    for (const auto &[pixel, number] : palette) {
        appendWord(bytes, static_cast<std::uint32_t>(number));
        for (std::uint32_t part : {pixel.red, pixel.green, pixel.blue})
            appendWord(bytes, part * 0x101);
    }
}

// Source, destination and mode: unscaled, replacing what is there.
void appendTransfer(std::string &bytes, const Pixels &pixels)
{
    appendFrame(bytes, pixels);
    appendFrame(bytes, pixels);
    appendWord(bytes, 0);
}

// Rows shorter than 8 bytes are not packed; the byte count of rows longer than
// 250 takes a word.
void appendRow(std::string &bytes, const std::string &unpacked, const std::string &toPack)
{
    if (unpacked.size() < 8) {
        bytes += unpacked;
        return;
    }
    std::string packed = packBits(toPack);
    if (unpacked.size() > 250)
        appendWord(bytes, static_cast<std::uint32_t>(packed.size()));
    else
        appendByte(bytes, static_cast<std::uint32_t>(packed.size()));
    bytes += packed;
}

std::string indexedRow(const Pixels &pixels, int v, const Palette &palette, int bits, std::size_t rowBytes)
{
    std::string row(rowBytes, '\0');
    for (int h = 0; h < pixels.width; ++h) {
        int shift = 8 - bits - h * bits % 8;
        auto &byte = row[static_cast<std::size_t>(h) * static_cast<std::size_t>(bits) / 8];
        byte = static_cast<char>(byte | palette.at(pixels.at(h, v)) << shift);
    }
    return row;
}

void appendIndexed(std::string &bytes, const Pixels &pixels, const Palette &palette)
{
    int bits = bitsFor(palette.size());
    std::size_t rowBytes = (static_cast<std::size_t>(pixels.width) * static_cast<std::size_t>(bits) + 15) / 16 * 2;
    auto depth = static_cast<std::uint32_t>(bits);
    appendWord(bytes, rowBytes < 8 ? 0x0090 : 0x0098);
    appendPixelMap(bytes, pixels, {static_cast<std::uint32_t>(rowBytes), 0, 0, depth, 1, depth});
    appendColors(bytes, palette);
    appendTransfer(bytes, pixels);
    for (int v = 0; v < pixels.height; ++v) {
        std::string row = indexedRow(pixels, v, palette, bits, rowBytes);
        appendRow(bytes, row, row);
    }
}

// All reds of the row, all greens, all blues.
std::string planes(const Pixels &pixels, int v)
{
    std::string row;
    for (auto part : {&Pixel::red, &Pixel::green, &Pixel::blue})
        for (int h = 0; h < pixels.width; ++h)
            row += static_cast<char>(pixels.at(h, v).*part);
    return row;
}

std::string chunky(const Pixels &pixels, int v)
{
    std::string row;
    for (int h = 0; h < pixels.width; ++h) {
        const Pixel &pixel = pixels.at(h, v);
        for (std::uint32_t part : {std::uint8_t{0}, pixel.red, pixel.green, pixel.blue})
            appendByte(row, part);
    }
    return row;
}

void appendDirect(std::string &bytes, const Pixels &pixels)
{
    appendWord(bytes, 0x009A);
    appendLong(bytes, 0xFF);
    appendPixelMap(bytes, pixels, {static_cast<std::uint32_t>(pixels.width) * 4, 4, 16, 32, 3, 8});
    appendTransfer(bytes, pixels);
    for (int v = 0; v < pixels.height; ++v)
        appendRow(bytes, chunky(pixels, v), planes(pixels, v));
}

void appendStart(std::string &bytes, const Pixels &pixels)
{
    appendFrame(bytes, pixels);
    appendLong(bytes, 0x001102FF);      // version 2
    appendLong(bytes, 0x0C00FFFE);      // its extended header
    appendWord(bytes, 0);
    appendLong(bytes, seventyTwoDpi);
    appendLong(bytes, seventyTwoDpi);
    appendFrame(bytes, pixels);
    appendLong(bytes, 0);
    appendLong(bytes, 0x0001000A);      // clip to the frame
    appendFrame(bytes, pixels);
}

std::string picture(const Pixels &pixels)
{
    std::string bytes;
    appendStart(bytes, pixels);
    if (std::optional<Palette> palette = paletteOf(pixels))
        appendIndexed(bytes, pixels, *palette);
    else
        appendDirect(bytes, pixels);
    // Opcodes are at even offsets; the length before them is a word.
    if (bytes.size() % 2)
        bytes += '\0';
    appendWord(bytes, 0x00FF);
    std::string length;
    appendWord(length, static_cast<std::uint32_t>(bytes.size() + 2));
    return length + bytes;
}

}  // namespace

std::string pictureBytes(Cursor &source)
{
    Place place = source.place();
    return picture(pixelsOf(fileBytes(source.file(), place), place));
}

}  // namespace rescomp
