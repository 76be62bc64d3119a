#include "quickdraw/picture_bits.h"

#include <array>

#include "toolbox/quickdraw.h"

namespace toolbox::quickdraw {
namespace {

constexpr unsigned pixelMapBit = 0x8000, rowBytesMask = 0x3FFF;
constexpr unsigned shortestPacked = 8, longestByteCounted = 250;
enum Packing { byDefault, unpacked, withoutPad, packedWords, packedPlanes };

struct Layout {
    bool direct = false;
    bool packed = false;
    unsigned rowBytes = 0;
    unsigned packing = byDefault;
    unsigned pixelSize = 1;
    unsigned components = 1;
    Rect bounds{};
    std::array<std::uint32_t, 256> colors{};

    std::size_t width() const { return static_cast<std::size_t>(bounds.right - bounds.left); }
    std::size_t height() const { return static_cast<std::size_t>(bounds.bottom - bounds.top); }
};

void readColors(PictureBytes &in, Layout &layout)
{
    constexpr unsigned inOrder = 0x8000;
    in.longWord();
    unsigned flags = in.word(), last = in.word();
    if (last > 255)
        throw DamagedPicture{};
    for (unsigned i = 0; i <= last; ++i) {
        unsigned value = in.word();
        std::uint32_t color = in.color();
        unsigned index = (flags & inOrder) ? i : value;
        if (index < layout.colors.size())
            layout.colors[index] = color;
    }
}

void readPixelMap(PictureBytes &in, Layout &layout)
{
    in.word();
    layout.packing = in.word();
    in.skip(12);   // packed size and resolutions
    in.word();
    layout.pixelSize = in.word();
    layout.components = in.word();
    in.word();
    in.skip(12);
    if (!layout.direct)
        readColors(in, layout);
}

bool sensible(const Layout &layout)
{
    unsigned size = layout.pixelSize;
    bool known = layout.direct ? size == 16 || size == 32 : size == 1 || size == 2 || size == 4 || size == 8;
    bool filled = layout.bounds.right > layout.bounds.left && layout.bounds.bottom > layout.bounds.top;
    return known && filled && (layout.width() * size + 7) / 8 <= layout.rowBytes;
}

Layout readLayout(PictureBytes &in, unsigned opcode, std::uint32_t fore, std::uint32_t back)
{
    Layout layout;
    layout.direct = opcode >= 0x9A;
    layout.packed = opcode >= 0x98;
    if (layout.direct)
        in.longWord();
    unsigned row = in.word();
    layout.rowBytes = row & rowBytesMask;
    layout.bounds = in.rect();
    layout.colors[0] = back;
    layout.colors[1] = fore;
    if (layout.direct || row & pixelMapBit)
        readPixelMap(in, layout);
    if (!sensible(layout))
        throw DamagedPicture{};
    return layout;
}

// Unpacks runs and literal stretches of units of one or two bytes into exactly
// `length` bytes.
std::string unpack(std::string_view packed, std::size_t length, unsigned unit)
{
    PictureBytes in(packed);
    std::string row;
    while (row.size() < length) {
        int flag = in.offset();
        if (flag == -128)
            continue;
        if (flag >= 0) {
            row += in.take((static_cast<std::size_t>(flag) + 1) * unit);
            continue;
        }
        std::string_view repeated = in.take(unit);
        for (int i = flag; i <= 0; ++i)
            row += repeated;
    }
    row.resize(length);
    return row;
}

std::string takePacked(PictureBytes &in, const Layout &layout, std::size_t length, unsigned unit)
{
    std::size_t count = layout.rowBytes > longestByteCounted ? in.word() : in.byte();
    return unpack(in.take(count), length, unit);
}

std::string takeIndexedRow(PictureBytes &in, const Layout &layout)
{
    if (layout.packed && layout.rowBytes >= shortestPacked && layout.packing != unpacked)
        return takePacked(in, layout, layout.rowBytes, 1);
    return std::string(in.take(layout.rowBytes));
}

std::uint32_t byteAt(const std::string &row, std::size_t at)
{
    return static_cast<unsigned char>(row[at]);
}

using PixelRow = std::vector<std::uint32_t>;

PixelRow indexedRow(PictureBytes &in, const Layout &layout)
{
    std::string row = takeIndexedRow(in, layout);
    unsigned size = layout.pixelSize;
    PixelRow pixels;
    for (std::size_t h = 0; h < layout.width(); ++h) {
        std::size_t bit = h * size;
        unsigned shift = 8 - size - static_cast<unsigned>(bit % 8);
        pixels.push_back(layout.colors[byteAt(row, bit / 8) >> shift & ((1u << size) - 1)]);
    }
    return pixels;
}

PixelRow shortRow(PictureBytes &in, const Layout &layout)
{
    bool plain = layout.packing == unpacked || layout.rowBytes < shortestPacked;
    std::string row = plain ? std::string(in.take(layout.rowBytes)) : takePacked(in, layout, layout.rowBytes, 2);
    PixelRow pixels;
    for (std::size_t h = 0; h < layout.width(); ++h) {
        std::uint32_t value = byteAt(row, 2 * h) << 8 | byteAt(row, 2 * h + 1);
        std::uint32_t pixel = 0;
        for (unsigned shift : {10u, 5u, 0u}) {
            std::uint32_t part = value >> shift & 31;
            pixel = pixel << 8 | (part << 3 | part >> 2);
        }
        pixels.push_back(pixel);
    }
    return pixels;
}

// Three bytes per pixel, after `lead` bytes that are skipped.
PixelRow chunkyRow(const std::string &row, std::size_t width, std::size_t lead)
{
    PixelRow pixels;
    for (std::size_t h = 0; h < width; ++h) {
        std::size_t at = h * (3 + lead) + lead;
        pixels.push_back(byteAt(row, at) << 16 | byteAt(row, at + 1) << 8 | byteAt(row, at + 2));
    }
    return pixels;
}

PixelRow planesRow(PictureBytes &in, const Layout &layout)
{
    if (layout.components != 3 && layout.components != 4)
        throw DamagedPicture{};
    std::size_t width = layout.width(), red = (layout.components - 3) * width;
    std::string row = takePacked(in, layout, layout.components * width, 1);
    PixelRow pixels;
    for (std::size_t h = 0; h < width; ++h)
        pixels.push_back(byteAt(row, red + h) << 16 | byteAt(row, red + width + h) << 8 |
                         byteAt(row, red + 2 * width + h));
    return pixels;
}

PixelRow longRow(PictureBytes &in, const Layout &layout)
{
    if (layout.packing == withoutPad)
        return chunkyRow(std::string(in.take(3 * layout.width())), layout.width(), 0);
    if (layout.packing == unpacked || layout.rowBytes < shortestPacked)
        return chunkyRow(std::string(in.take(layout.rowBytes)), layout.width(), 1);
    return planesRow(in, layout);
}

PixelRow readRow(PictureBytes &in, const Layout &layout)
{
    if (!layout.direct)
        return indexedRow(in, layout);
    return layout.pixelSize == 16 ? shortRow(in, layout) : longRow(in, layout);
}

// The part of the image that the source rectangle names.
Picture readPart(PictureBytes &in, const Layout &layout, const Rect &source)
{
    Rect part{};
    SectRect(&source, &layout.bounds, &part);
    Picture picture{part.right - part.left, part.bottom - part.top, {}};
    auto first = static_cast<std::ptrdiff_t>(part.left - layout.bounds.left);
    for (int v = layout.bounds.top; v < layout.bounds.bottom; ++v) {
        PixelRow row = readRow(in, layout);
        if (v >= part.top && v < part.bottom)
            picture.pixels.insert(picture.pixels.end(), row.begin() + first, row.begin() + first + picture.width);
    }
    return picture;
}

}  // namespace

PictureBits readBits(PictureBytes &in, unsigned opcode, std::uint32_t fore, std::uint32_t back,
                     std::size_t &pixelsLeft)
{
    Layout layout = readLayout(in, opcode, fore, back);
    std::size_t count = layout.width() * layout.height();
    if (count > pixelsLeft)
        throw DamagedPicture{};
    pixelsLeft -= count;
    PictureBits bits;
    Rect source = in.rect();
    bits.destination = in.rect();
    bits.mode = in.number();
    if (opcode & 1)
        in.region();
    bits.pixels = readPart(in, layout, source);
    return bits;
}

}  // namespace toolbox::quickdraw
