// 'PICT' resources: what their bytes draw, and bytes that draw nothing.
#include <random>

#include "quickdraw/picture_format.h"
#include "support/dialog_resources.h"
#include "support/dialog_test.h"
#include "toolbox/dialogs.h"
#include "toolbox/memory.h"
#include "toolbox/quickdraw_canvas.h"

using toolbox::quickdraw::readPicture;

namespace {

using Bytes = ResourceBytes;

Bytes version1(int width, int height)
{
    return Bytes().word(0).rect(0, 0, width, height).byte(0x11).byte(1);
}

Bytes version2(int width, int height)
{
    Bytes bytes;
    bytes.word(0).rect(0, 0, width, height).word(0x11).word(0x2FF).word(0xC00);
    for (int i = 0; i < 6; ++i)
        bytes.longWord(0);
    return bytes;
}

struct MapShape {
    int packType, pixelType, pixelSize, components;
};

void addMap(Bytes &bytes, int rowBytes, int width, int height, const MapShape &shape)
{
    bytes.word(rowBytes | 0x8000).rect(0, 0, width, height).word(0).word(shape.packType).longWord(0);
    bytes.longWord(0x480000).longWord(0x480000).word(shape.pixelType).word(shape.pixelSize).word(shape.components);
    bytes.word(8).longWord(0).longWord(0).longWord(0);
}

void addTransfer(Bytes &bytes, int width, int height, int mode = 0)
{
    bytes.rect(0, 0, width, height).rect(0, 0, width, height).word(mode);
}

// Red and blue in turn, two rows, at that many bits per pixel.
std::string indexedPicture(int bits)
{
    const int width = 64 / bits;   // eight bytes a row
    Bytes bytes = version2(width, 2);
    bytes.word(0x98);
    addMap(bytes, 8, width, 2, {0, 0, bits, 1});
    bytes.longWord(0).word(0).word(1);
    bytes.word(0).word(0xFFFF).word(0).word(0);
    bytes.word(1).word(0).word(0).word(0xFFFF);
    addTransfer(bytes, width, 2);
    const int patterns[] = {0x55, 0x11, 0x01, 0x00};
    int pattern = patterns[bits == 1 ? 0 : bits == 2 ? 1 : bits == 4 ? 2 : 3];
    for (int row = 0; row < 2; ++row) {
        if (bits == 8) {
            bytes.byte(9).byte(7);
            for (int i = 0; i < 8; ++i)
                bytes.byte(i % 2);
        } else {
            bytes.byte(2).byte(-7 & 0xFF).byte(pattern);
        }
    }
    return bytes.evenly().word(0xFF).bytes();
}

// Four pixels: red, green, blue, white.
std::string directPicture(int packType, int pixelSize)
{
    const int rgb[4][3] = {{255, 0, 0}, {0, 255, 0}, {0, 0, 255}, {255, 255, 255}};
    Bytes bytes = version2(4, 1);
    bytes.word(0x9A).longWord(0xFF);
    addMap(bytes, 4 * pixelSize / 8, 4, 1, {packType, 16, pixelSize, 3});
    addTransfer(bytes, 4, 1);
    if (pixelSize == 16 && packType != 1)
        bytes.byte(9).byte(3);
    if (pixelSize == 32 && packType != 1 && packType != 2) {
        bytes.byte(13).byte(11);
        for (int part = 0; part < 3; ++part)
            for (const int *pixel : rgb)
                bytes.byte(pixel[part]);
        return bytes.evenly().word(0xFF).bytes();
    }
    for (const int *pixel : rgb) {
        if (pixelSize == 16)
            bytes.word((pixel[0] >> 3) << 10 | (pixel[1] >> 3) << 5 | pixel[2] >> 3);
        else if (packType == 1)
            bytes.byte(0);
        if (pixelSize == 32)
            bytes.byte(pixel[0]).byte(pixel[1]).byte(pixel[2]);
    }
    return bytes.evenly().word(0xFF).bytes();
}

// Eight by two pixels, unpacked: AA above, 55 below.
std::string smallBitmap(int mode = 0)
{
    Bytes bytes = version1(8, 2);
    bytes.byte(1).word(10).rect(0, 0, 8, 2).byte(0x90).word(2).rect(0, 0, 8, 2);
    addTransfer(bytes, 8, 2, mode);
    return bytes.byte(0xAA).byte(0).byte(0x55).byte(0).byte(0xFF).bytes();
}

class PictureResources : public CanvasTest {
protected:
    void draw(const std::string &bytes, const Rect &box)
    {
        Handle block = nullptr;
        ASSERT_EQ(PtrToHand(bytes.data(), &block, static_cast<Size>(bytes.size())), noErr);
        DrawPicture(reinterpret_cast<PicHandle>(block), &box);
        DisposeHandle(block);
    }
};

TEST_F(PictureResources, BitmapOfVersion1)
{
    draw(smallBitmap(), {10, 20, 12, 28});
    for (int h = 0; h < 8; ++h) {
        EXPECT_EQ(pixel(20 + h, 10), h % 2 ? white : black);
        EXPECT_EQ(pixel(20 + h, 11), h % 2 ? black : white);
    }
    EXPECT_EQ(inked(), 8);
}

TEST_F(PictureResources, StretchedToTheRectangle)
{
    draw(smallBitmap(), {10, 20, 18, 44});   // three times across, four down
    for (int v = 0; v < 8; ++v)
        for (int h = 0; h < 24; ++h)
            EXPECT_EQ(pixel(20 + h, 10 + v), (h / 3 + v / 4) % 2 ? white : black) << h << "," << v;
    EXPECT_EQ(inked(), 96);
}

TEST_F(PictureResources, ShrunkToTheRectangle)
{
    draw(smallBitmap(), {10, 20, 11, 24});
    for (int h = 0; h < 4; ++h)
        EXPECT_EQ(pixel(20 + h, 10), black) << "every other pixel is taken";
    EXPECT_EQ(inked(), 4);
}

TEST_F(PictureResources, WhiteCoversUnlessItIsClear)
{
    const Rect under = {0, 0, 30, 60};
    for (int mode : {0, 64, 1, 36}) {
        PaintRect(&under);
        draw(smallBitmap(mode), {10, 20, 12, 28});
        EXPECT_EQ(pixel(21, 10), mode == 0 || mode == 64 ? white : black) << mode;
    }
}

TEST_F(PictureResources, IndexedImagesOfAllDepths)
{
    for (int bits : {1, 2, 4, 8}) {
        const int width = 64 / bits;
        draw(indexedPicture(bits), {5, 5, 7, static_cast<int16_t>(5 + width)});
        for (int h = 0; h < width; ++h)
            EXPECT_EQ(pixel(5 + h, 6), h % 2 ? 0x0000FFu : 0xFF0000u) << bits << " bits, pixel " << h;
    }
}

TEST_F(PictureResources, DirectImagesHoweverTheyArePacked)
{
    for (auto [packType, size] : {std::pair{0, 32}, {1, 32}, {2, 32}, {4, 32}, {0, 16}, {1, 16}, {3, 16}}) {
        EraseRect(&port.portRect);
        draw(directPicture(packType, size), {5, 5, 6, 9});
        EXPECT_EQ(pixel(5, 5), 0xFF0000u) << packType << " " << size;
        EXPECT_EQ(pixel(6, 5), 0x00FF00u) << packType << " " << size;
        EXPECT_EQ(pixel(7, 5), 0x0000FFu) << packType << " " << size;
        EXPECT_EQ(pixel(8, 5), 0xFFFFFFu) << packType << " " << size;
    }
}

TEST_F(PictureResources, RectanglesLinesAndColours)
{
    Bytes bytes = version2(40, 20);
    bytes.word(0x1A).word(0xFFFF).word(0).word(0).word(0x31).rect(0, 0, 10, 10);
    bytes.word(0x0E).longWord(blackColor).word(0x30).rect(10, 0, 10, 10);
    bytes.word(0x20).word(15).word(0).word(15).word(39);
    bytes.word(0x33).rect(0, 0, 5, 10);
    bytes.word(0x07).word(2).word(2).word(0x30).rect(20, 0, 10, 10).word(0x3A).word(0xFF);
    draw(bytes.bytes(), {0, 0, 20, 40});
    EXPECT_EQ(pixel(7, 5), 0xFF0000u);
    EXPECT_EQ(pixel(2, 5), 0x00FFFFu) << "inverted";
    EXPECT_EQ(pixel(10, 5), black);
    EXPECT_EQ(pixel(15, 5), white) << "a frame is hollow";
    EXPECT_EQ(pixel(39, 15), black);
    EXPECT_EQ(pixel(21, 5), white) << "the same rectangle, erased";
}

TEST_F(PictureResources, FourthVertexOfALineIsItsEnd)
{
    Bytes bytes = version1(40, 20);
    bytes.byte(0x22).word(5).word(5).byte(10).byte(0).byte(0x23).byte(0).byte(4).byte(0xFF);
    draw(bytes.bytes(), {0, 0, 20, 40});
    EXPECT_EQ(pixel(15, 5), black);
    EXPECT_EQ(pixel(15, 9), black);
    EXPECT_EQ(inked(), 15);
}

TEST_F(PictureResources, ClipKeepsDrawingIn)
{
    Bytes bytes = version1(20, 20);
    bytes.byte(1).word(10).rect(0, 0, 5, 5).byte(0x31).rect(0, 0, 20, 20).byte(0xFF);
    draw(bytes.bytes(), {0, 0, 20, 20});
    EXPECT_EQ(inked(), 25);
    draw(bytes.bytes(), {0, 0, 40, 40});
    EXPECT_EQ(inked(), 100) << "stretched with the rest";
}

TEST_F(PictureResources, PortKeepsItsPenAndColours)
{
    PenSize(3, 4);
    ForeColor(redColor);
    Bytes bytes = version1(20, 20);
    bytes.byte(0x0E).longWord(blueColor).byte(7).word(9).word(9).byte(0x31).rect(0, 0, 20, 20).byte(0xFF);
    draw(bytes.bytes(), {0, 0, 20, 20});
    EXPECT_EQ(pixel(3, 3), 0x0000CCu);
    EXPECT_EQ(port.fgColor, redColor);
    EXPECT_EQ(port.pnSize.h, 3);
    EXPECT_EQ(port.pnSize.v, 4);
}

TEST_F(PictureResources, WhatIsNotDrawnIsSkipped)
{
    Bytes bytes = version2(20, 20);
    bytes.word(0xA0).word(0).word(0xA1).word(100).word(3).byte(1).byte(2).byte(3).evenly();
    bytes.word(0x28).word(5).word(5).byte(2).byte('H').byte('i').evenly();
    bytes.word(0x50).rect(0, 0, 4, 4).word(0x70).word(10).rect(0, 0, 4, 4).word(0x2C).word(2).word(7);
    bytes.word(0x8201).longWord(4).longWord(0).word(0x0200).longWord(0);
    bytes.word(0x31).rect(0, 0, 20, 20).word(0xFF);
    draw(bytes.bytes(), {0, 0, 20, 20});
    EXPECT_EQ(inked(), 400);
}

TEST_F(PictureResources, ImageWithARegionIsDrawn)
{
    Bytes bytes = version1(8, 1);
    bytes.byte(0x91).word(2).rect(0, 0, 8, 1);
    addTransfer(bytes, 8, 1);
    bytes.word(12).rect(0, 0, 8, 1).word(0x7FFF).byte(0xFF).byte(0).byte(0xFF);
    draw(bytes.bytes(), {0, 0, 1, 8});
    EXPECT_EQ(inked(), 8);
}

TEST_F(PictureResources, BytesThatEndEarlyDrawNothing)
{
    for (const std::string &whole : {smallBitmap(), indexedPicture(8), directPicture(4, 32)})
        for (size_t length = 0; length < whole.size(); ++length) {
            draw(whole.substr(0, length), {0, 0, 40, 40});
            ASSERT_EQ(inked(), 0) << length << " of " << whole.size();
        }
}

TEST_F(PictureResources, WrongSizesAreRefused)
{
    auto bitmap = [](int rowBytes, int width, int height) {
        Bytes bytes = version1(8, 8);
        bytes.byte(0x90).word(rowBytes).rect(0, 0, width, height);
        addTransfer(bytes, width, height);
        return bytes.bytes() + std::string(64, '\0') + "\xFF";
    };
    EXPECT_TRUE(readPicture(bitmap(1, 8, 64)));
    EXPECT_FALSE(readPicture(bitmap(1, 9, 64))) << "a row is longer than its bytes";
    EXPECT_FALSE(readPicture(bitmap(0, 8, 64)));
    EXPECT_FALSE(readPicture(bitmap(1, 0, 64)));
    EXPECT_FALSE(readPicture(bitmap(1, -8, 64)));
    EXPECT_FALSE(readPicture(bitmap(0x3FFE, 32767, 32767)));
    EXPECT_FALSE(readPicture(version1(0, 8).byte(0xFF).bytes())) << "no frame";
    EXPECT_FALSE(readPicture(version1(8, 8).byte(1).word(9).byte(0xFF).bytes())) << "a region too short";
    EXPECT_FALSE(readPicture(version1(8, 8).byte(0x12).byte(0xFF).bytes())) << "a pixel pattern";
    EXPECT_FALSE(readPicture(Bytes().word(0).rect(0, 0, 8, 8).word(0x1102).byte(0xFF).bytes())) << "no version";
}

// 32767 by 600 pixels, each row packed into few bytes: too many pixels.
TEST_F(PictureResources, PicturesOfTooManyPixelsAreRefused)
{
    Bytes bytes = version2(8, 8);
    bytes.word(0x98).word(4096).rect(0, 0, 32767, 600);
    addTransfer(bytes, 8, 8);
    for (int row = 0; row < 600; ++row) {
        bytes.word(64);
        for (int i = 0; i < 32; ++i)
            bytes.byte(0x81).byte(0);
    }
    EXPECT_FALSE(readPicture(bytes.word(0xFF).bytes()));
}

TEST_F(PictureResources, NothingIsDrawnForNoPictureOrNoRectangle)
{
    const Rect box = {0, 0, 20, 20};
    DrawPicture(nullptr, &box);
    draw(smallBitmap(), {10, 10, 10, 30});
    draw(smallBitmap(), {10, 30, 20, 10});
    EXPECT_EQ(inked(), 0);
    EXPECT_EQ(GetPicture(12345), nullptr);
}

TEST_F(PictureResources, RandomChangesAreReadOrRefused)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const std::string sources[] = {smallBitmap(), indexedPicture(4), directPicture(4, 32), directPicture(0, 16)};
    int read = 0;
    for (int turn = 0; turn < 4000; ++turn) {
        std::string bytes = sources[turn % 4];
        for (unsigned i = random() % 4; i > 0; --i)
            bytes[random() % bytes.size()] = static_cast<char>(random());
        auto contents = readPicture(bytes);
        if (!contents)
            continue;
        ++read;
        for (const auto &step : contents->steps)
            ASSERT_EQ(step.image.pixels.size(), size_t(step.image.width) * size_t(step.image.height));
        if (turn % 16 == 0)
            draw(bytes, {0, 0, 30, 30});
    }
    EXPECT_GT(read, 500);
}

// --- In dialogs -------------------------------------------------------------

class PictureItems : public DialogTest {};

TEST_F(PictureItems, PictureIsDrawnInItsItemEvenAfterAPurge)
{
    Bytes bytes;
    for (char byte : smallBitmap())
        bytes.byte(byte);
    bytes.add('PICT', 700);
    ItemList().item(picItem, 20, 10, 16, 4, std::string("\x02\xBC", 2)).add(600);
    addDialog(600, 50, 60, 200, 150, true);
    DialogPtr dialog = GetNewDialog(600, nullptr, reinterpret_cast<WindowPtr>(-1));
    ASSERT_NE(dialog, nullptr);
    auto dark = [] {
        DrawDialog(FrontWindow());
        toolbox::Picture display = toolbox::displayPicture(0);
        int count = 0;
        for (int v = 70; v < 74; ++v)
            for (int h = 70; h < 86; ++h)
                count += display.pixels[size_t(v * display.width + h)] == black;
        return count;
    };
    EXPECT_EQ(dark(), 32);
    PurgeMem(0x800000);
    EXPECT_EQ(dark(), 32);
    DisposDialog(dialog);
}

}  // namespace
