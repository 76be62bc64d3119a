// Where plates print over each other, and pictures of what they make there.
#include "proof/looking/linear_light.h"
#include "proof/looking/pattern_picture.h"
#include "support/toolbox_test.h"

namespace {

namespace proof = riders::proof;
namespace plates = riders::plates;
using plates::Place;
using proof::Colour;
using proof::Picture;
using riders::plates::BitPlate;

constexpr double kDpi = 320;  // blocks are of 16 pixels

void checker(BitPlate &plate, int left, int top, int side)
{
    for (int y = top; y < top + side; ++y)
        for (int x = left; x < left + side; ++x)
            if (x / 2 % 2 == y / 2 % 2)
                plate.row(y)[x / 8] |= static_cast<std::uint8_t>(0x80 >> x % 8);
}

// Two plates of 3 by 2 inches with a tint of half an inch over each other at (1.5, 0.75), and one each elsewhere.
struct Overlapping {
    Overlapping()
    {
        for (BitPlate *plate : {&one, &other})
            checker(*plate, 480, 240, 160);
        checker(one, 0, 0, 220);
        checker(other, 700, 400, 220);
    }
    BitPlate one{960, 640}, other{960, 640};
};

TEST(PatternPicture, TheSharedAreaIsWhereAllPlatesHaveTints)
{
    const Overlapping plates;
    EXPECT_NEAR(proof::sharedArea({&plates.one, &plates.other}, kDpi), 0.25, 0.001);
    EXPECT_GT(proof::sharedArea({&plates.one}, kDpi), 0.65);
    BitPlate solid(960, 640);
    std::fill(solid.bits.begin(), solid.bits.end(), std::uint8_t{0xFF});
    EXPECT_EQ(proof::sharedArea({&plates.one, &solid}, kDpi), 0) << "solid ink has no dots";
    EXPECT_EQ(proof::sharedArea({&plates.one, &plates.other, &solid}, kDpi), 0);
    const BitPlate tiny(3, 3);
    EXPECT_EQ(proof::sharedArea({&tiny, &tiny}, kDpi), 0);
}

TEST(PatternPicture, ThePlaceIsThere)
{
    Overlapping plates;
    checker(plates.one, 880, 304, 48);  // less, further to the right
    checker(plates.other, 880, 304, 48);
    const Place place = proof::sharedPlace({&plates.one, &plates.other}, kDpi, 0.5);
    EXPECT_NEAR(place.left, 1.5, 1e-9);
    EXPECT_NEAR(place.top, 0.75, 1e-9);
    EXPECT_EQ(place.width, 0.5);
    const Place all = proof::sharedPlace({&plates.one, &plates.other}, kDpi, 10);
    EXPECT_EQ(all.left, 0);
    EXPECT_EQ(all.width, 3);
    EXPECT_EQ(all.height, 2);
    const BitPlate tiny(3, 3);
    EXPECT_NEAR(proof::sharedPlace({&tiny, &tiny}, kDpi, 1).width, 3 / kDpi, 1e-9);
}

TEST(PatternPicture, LightIsAveragedNotNumbers)
{
    EXPECT_EQ(proof::colourOf(proof::lightOf({1, 128, 255})), (Colour{1, 128, 255}));
    EXPECT_EQ(proof::colourOf({0.5F, 0, 1}), (Colour{188, 0, 255}));
    EXPECT_NEAR(proof::luminance(proof::lightOf({255, 237, 0})), 0.82, 0.01);
}

// 1800 pixels on 900: each the mean of four, of which two are black, or all, or none.
TEST(PatternPicture, PixelsAreMeansOfThosePrinted)
{
    BitPlate plate(1800, 1800);
    checker(plate, 1, 0, 900);
    const Picture picture = proof::patternPicture({{&plate, {0, 0, 0}}}, 1800, {0, 0, 1, 1}, 0.01);
    ASSERT_EQ(picture.width, 900);
    ASSERT_EQ(picture.height, 900);
    EXPECT_EQ(picture.pixels[899], (Colour{255, 255, 255}));
    EXPECT_EQ(picture.pixels[5], picture.pixels[5 + 2]);
    EXPECT_NE(picture.pixels[4], picture.pixels[5]);
    EXPECT_TRUE(proof::showsDots({0, 0, 1, 1}, 0.01));
    EXPECT_FALSE(proof::showsDots({0, 0, 1, 1}, 1 / 151.0));
}

TEST(PatternPicture, InksMultiplyOverEachOther)
{
    BitPlate one(8, 8), other(8, 8);
    one.row(0)[0] = 0xF0;
    other.row(0)[0] = 0x3C;
    const Picture picture =
        proof::patternPicture({{&one, {255, 0, 0}}, {&other, {255, 255, 0}}}, 100, {0, 0, 0.08, 0.08}, 0.02);
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
    const Picture picture = proof::patternPicture({{&plate, {0, 0, 0}}}, 1200, {0, 0, 1, 1}, 4 / 1200.0);
    EXPECT_LE(picture.width, proof::kPatternPixels);
    EXPECT_EQ(picture.width, picture.height);
    for (const Colour &pixel : picture.pixels)
        ASSERT_NEAR(pixel.red, 188, 12);
    const Colour middle = picture.pixels[picture.pixels.size() / 2 + static_cast<size_t>(picture.width) / 2];
    EXPECT_NEAR(middle.red, 188, 3);
}

}  // namespace
