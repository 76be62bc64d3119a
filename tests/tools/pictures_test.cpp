// Pictures: from PNG files to opcodes, and back with a simple reader.
#include "tools/compile.h"

#include <png.h>

#include <cstring>
#include <random>

#include "packbits.h"
#include "toolbox/host/big_bytes.h"

using namespace toolbox;

namespace {

std::string pngOf(int width, int height, const std::string &rgb)
{
    png_image image;
    std::memset(&image, 0, sizeof image);
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(width);
    image.height = static_cast<png_uint_32>(height);
    image.format = PNG_FORMAT_RGB;
    png_alloc_size_t size = 0;
    png_image_write_to_memory(&image, nullptr, &size, 0, rgb.data(), 0, nullptr);
    std::string bytes(size, '\0');
    png_image_write_to_memory(&image, bytes.data(), &size, 0, rgb.data(), 0, nullptr);
    bytes.resize(size);
    return bytes;
}

std::string unpacked(std::string_view packed)
{
    std::string bytes;
    for (size_t i = 0; i < packed.size();) {
        int flag = static_cast<signed char>(packed[i++]);
        if (flag >= 0) {
            bytes += packed.substr(i, static_cast<size_t>(flag) + 1);
            i += static_cast<size_t>(flag) + 1;
        } else {
            bytes.append(static_cast<size_t>(1 - flag), packed[i++]);
        }
    }
    return bytes;
}

// The pixels of a picture as this compiler writes them, as RGB.
class Reader {
public:
    explicit Reader(const std::string &picture) : picture_(picture) {}
    std::string rgb();

private:
    std::uint32_t take(int count)
    {
        at_ += static_cast<size_t>(count);
        return bytesAt(picture_, at_ - static_cast<size_t>(count), count);
    }
    std::string row(size_t rowBytes);
    void palette();

    const std::string &picture_;
    size_t at_ = 0;
    std::vector<std::string> colors_;
};

std::string Reader::row(size_t rowBytes)
{
    size_t length = rowBytes < 8 ? rowBytes : take(rowBytes > 250 ? 2 : 1);
    std::string bytes = picture_.substr(at_, length);
    at_ += length;
    return rowBytes < 8 ? bytes : unpacked(bytes);
}

void Reader::palette()
{
    at_ += 6;
    for (size_t left = take(2) + 1; left > 0; --left) {
        EXPECT_EQ(take(2), colors_.size());
        std::string color;
        for (int part = 0; part < 3; ++part)
            appendByte(color, take(2) >> 8);
        colors_.push_back(color);
    }
}

std::string Reader::rgb()
{
    at_ = 10 + 4 + 26 + 12;
    bool direct = take(2) == 0x9A;
    at_ += direct ? 4 : 0;
    size_t rowBytes = take(2) & 0x3FFF;
    at_ += 4;
    size_t height = take(2), width = take(2);
    at_ += 18;
    size_t depth = take(2);
    at_ += 16;
    if (!direct)
        palette();
    at_ += 18;
    std::string rgb;
    for (size_t v = 0; v < height; ++v) {
        std::string bytes = row(rowBytes);
        for (size_t h = 0; h < width; ++h) {
            if (!direct) {
                size_t bit = h * depth;
                unsigned value = static_cast<unsigned char>(bytes.at(bit / 8)) >> (8 - depth - bit % 8);
                rgb += colors_.at(value & ((1u << depth) - 1));
            } else {
                for (size_t part = 0; part < 3; ++part)
                    rgb += rowBytes < 8 ? bytes.at(h * 4 + 1 + part) : bytes.at(part * width + h);
            }
        }
    }
    at_ += at_ % 2;
    EXPECT_EQ(take(2), 0xFFu);
    EXPECT_EQ(at_, picture_.size());
    return rgb;
}

}  // namespace

TEST(PackBits, PacksTheDocumentedRow)
{
    std::string row = fromHex("AA AA AA 80 00 2A AA AA AA AA 80 00 2A 22 AA AA AA AA AA AA AA AA AA AA");
    EXPECT_EQ(asHex(rescomp::packBits(row)), asHex(fromHex("FE AA 02 80 00 2A FD AA 03 80 00 2A 22 F7 AA")));
}

TEST(PackBits, RandomRowsComeBackAndStayWithinTheWorstCase)
{
    unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    for (int round = 0; round < 2000; ++round) {
        std::string row;
        for (unsigned left = random() % 60; left > 0; --left)
            row.append(1 + random() % (random() % 10 ? 3 : 200), static_cast<char>(random() % 3));
        std::string packed = rescomp::packBits(row);
        EXPECT_EQ(unpacked(packed), row);
        EXPECT_LE(packed.size(), row.size() + (row.size() + 126) / 127);
    }
}

TEST_F(Compile, BlackAndWhitePictureIsOneBitUnpacked)
{
    std::string black(3, '\0'), white(3, '\xFF');
    writeFile(folder / "x.png", pngOf(2, 2, black + white + white + black));
    EXPECT_EQ(asHex(bytes("picture 1 file \"x.png\"")),
              asHex(fromHex("0094 0000 0000 0002 0002"
                            "0011 02FF 0C00 FFFE 0000 00480000 00480000 0000 0000 0002 0002 00000000"
                            "0001 000A 0000 0000 0002 0002"
                            "0090 8002 0000 0000 0002 0002 0000 0000 00000000 00480000 00480000"
                            "0000 0001 0001 0001 00000000 00000000 00000000"
                            "00000000 0000 0001 0000 0000 0000 0000 0001 FFFF FFFF FFFF"
                            "0000 0000 0002 0002 0000 0000 0002 0002 0000"
                            "4000 8000 00FF")));
}

TEST_F(Compile, PicturesOfAnyDepthAndWidthComeBack)
{
    unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    for (int colors : {1, 2, 3, 4, 5, 16, 17, 256, 257, 5000})
        for (int width : {1, 7, 8, 9, 64, 251, 300}) {
            std::string rgb;
            int height = 5 + (colors > 256 && width < 100 ? 600 / width : 0);
            for (int i = 0; i < width * height; ++i) {
                unsigned color = random() % static_cast<unsigned>(colors);
                for (unsigned part : {color * 7, color >> 4, color * 31})
                    rgb += static_cast<char>(part);
            }
            writeFile(folder / "x.png", pngOf(width, height, rgb));
            std::string picture = bytes("picture 1 file \"x.png\"");
            EXPECT_EQ(Reader(picture).rgb(), rgb) << colors << " colours, " << width << " across";
        }
}

TEST_F(Compile, ADamagedPictureIsRefused)
{
    std::string png = pngOf(20, 20, std::string(1200, 'x'));
    writeFile(folder / "x.png", png.substr(0, png.size() / 2));
    EXPECT_TRUE(complaint("\npicture 1 file \"x.png\"").starts_with("2: the picture is "));
}
