// Pictures of the patterns that plates make over each other.
#include "looking/pictures/linear_light.h"
#include "looking/pictures/pattern_picture.h"
#include "support/toolbox_test.h"

namespace {

namespace looking = riders::looking;
using looking::Colour;
using looking::Picture;
using riders::plates::BitPlate;

void checker(BitPlate &plate, int left, int top, int side)
{
    for (int y = top; y < top + side; ++y)
        for (int x = left; x < left + side; ++x)
            if (x / 2 % 2 == y / 2 % 2)
                plate.row(y)[x / 8] |= static_cast<std::uint8_t>(0x80 >> x % 8);
}

TEST(PatternPicture, LightIsAveragedNotNumbers)
{
    EXPECT_EQ(looking::colourOf(looking::lightOf({1, 128, 255})), (Colour{1, 128, 255}));
    EXPECT_EQ(looking::colourOf({0.5F, 0, 1}), (Colour{188, 0, 255}));
    EXPECT_NEAR(looking::luminance(looking::lightOf({255, 237, 0})), 0.82, 0.01);
}

// 1800 pixels on 900: each the mean of four, of which two are black, or all, or none.
TEST(PatternPicture, PixelsAreMeansOfThosePrinted)
{
    BitPlate plate(1800, 1800);
    checker(plate, 1, 0, 900);
    const Picture picture = looking::patternPicture({{&plate, {0, 0, 0}}}, 1800, {0, 0, 1, 1}, 0.01);
    ASSERT_EQ(picture.width, 900);
    ASSERT_EQ(picture.height, 900);
    EXPECT_EQ(picture.pixels[899], (Colour{255, 255, 255}));
    EXPECT_EQ(picture.pixels[5], picture.pixels[5 + 2]);
    EXPECT_NE(picture.pixels[4], picture.pixels[5]);
    EXPECT_TRUE(looking::showsDots({0, 0, 1, 1}, 0.01));
    EXPECT_FALSE(looking::showsDots({0, 0, 1, 1}, 1 / 151.0));
}

TEST(PatternPicture, InksMultiplyOverEachOther)
{
    BitPlate one(8, 8), other(8, 8);
    one.row(0)[0] = 0xF0;
    other.row(0)[0] = 0x3C;
    const Picture picture =
        looking::patternPicture({{&one, {255, 0, 0}}, {&other, {255, 255, 0}}}, 100, {0, 0, 0.08, 0.08}, 0.02);
    ASSERT_EQ(picture.width, 8);
    EXPECT_EQ(picture.pixels[0], (Colour{255, 0, 0}));
    EXPECT_EQ(picture.pixels[2], (Colour{255, 0, 0}));
    EXPECT_EQ(picture.pixels[4], (Colour{255, 255, 0}));
    EXPECT_EQ(picture.pixels[6], (Colour{255, 255, 255}));
}

// 300 cells of 4 pixels: the dots are gone, half the light is left.
TEST(PatternPicture, FromAfarDotsAreBlurred)
{
    BitPlate plate(1200, 1200);
    checker(plate, 0, 0, 1200);
    const Picture picture = looking::patternPicture({{&plate, {0, 0, 0}}}, 1200, {0, 0, 1, 1}, 4 / 1200.0);
    EXPECT_LE(picture.width, looking::kPatternPixels);
    EXPECT_EQ(picture.width, picture.height);
    for (const Colour &pixel : picture.pixels)
        ASSERT_NEAR(pixel.red, 188, 12);
    const Colour middle = picture.pixels[picture.pixels.size() / 2 + static_cast<size_t>(picture.width) / 2];
    EXPECT_NEAR(middle.red, 188, 3);
}

}  // namespace
