// What tints a plate has, and where its screen is measured and looked at.
#include "host/proof_support.h"
#include "plates/measuring/flat_tint.h"
#include "plates/measuring/telling_place.h"

namespace {

namespace plates = riders::plates;

using plates::Place;
using riders::plates::TintPlate;

constexpr double kDpi = 100;

TintPlate blank(int width, int height)
{
    TintPlate plate{width, height, {}};
    plate.ink.resize(static_cast<size_t>(width) * static_cast<size_t>(height));
    return plate;
}

void fill(TintPlate &plate, int left, int top, int right, int bottom, int ink)
{
    for (int y = top; y < bottom; ++y)
        for (int x = left; x < right; ++x)
            plate.ink[static_cast<size_t>(y) * static_cast<size_t>(plate.width) + x] =
                static_cast<std::uint8_t>(ink);
}

TEST(MeasuringPlaces, RangeIsOfTintsLargeEnoughToSee)
{
    TintPlate plate = blank(200, 200);
    EXPECT_FALSE(plates::tintRange(plate, kDpi).tint);
    fill(plate, 0, 0, 50, 50, 51);
    fill(plate, 60, 0, 110, 50, 204);
    fill(plate, 0, 60, 2, 62, 1);  // a quarter of a square millimetre
    fill(plate, 100, 100, 101, 101, 255);
    const plates::TintRange range = plates::tintRange(plate, kDpi);
    EXPECT_TRUE(range.tint);
    EXPECT_TRUE(range.solid);
    EXPECT_DOUBLE_EQ(range.least, 0.2);
    EXPECT_DOUBLE_EQ(range.most, 0.8);
}

TEST(MeasuringPlaces, TheFlatTintIsLargeAndNotTooLight)
{
    TintPlate plate = blank(600, 400);
    fill(plate, 0, 0, 600, 100, 12);  // larger, but 5 %
    fill(plate, 100, 150, 260, 270, 128);
    fill(plate, 400, 150, 480, 230, 128);
    const Place place = plates::flatTint(plate, kDpi);
    EXPECT_NEAR(place.left + place.width / 2, 1.8, 0.06);
    EXPECT_NEAR(place.top + place.height / 2, 2.1, 0.06);
    EXPECT_GT(place.left, 1.0);
    EXPECT_LT(place.left + place.width, 2.6);
    EXPECT_GT(place.width, 1.4);
    EXPECT_LE(place.width, 1.5);
}

TEST(MeasuringPlaces, NoFlatTintInTextOrASlope)
{
    TintPlate plate = blank(300, 300);
    EXPECT_TRUE(plates::flatTint(plate, kDpi).empty());
    fill(plate, 0, 0, 300, 300, 255);
    EXPECT_TRUE(plates::flatTint(plate, kDpi).empty());
    for (int x = 0; x < 300; ++x)
        fill(plate, x, 0, x + 1, 300, 20 + x / 2);
    EXPECT_TRUE(plates::flatTint(plate, kDpi).empty());
}

TEST(MeasuringPlaces, TheLoupeIsHeldOverTheMiddleOfATint)
{
    TintPlate plate = blank(800, 800);
    fill(plate, 320, 320, 720, 720, 128);
    const Place place = plates::tellingPlace({&plate}, kDpi, 1);
    EXPECT_NEAR(place.left + 0.5, 5.2, 0.2);
    EXPECT_NEAR(place.top + 0.5, 5.2, 0.2);
    EXPECT_NEAR(plates::tellingShare(plate, kDpi, place), 1, 0.01);
    EXPECT_DOUBLE_EQ(plates::tellingShare(plate, kDpi, {0, 0, 1, 1}), 0);
}

TEST(MeasuringPlaces, TheLoupeIsHeldWherePlatesMeet)
{
    TintPlate cyan = blank(800, 800), magenta = blank(800, 800);
    fill(cyan, 0, 0, 480, 800, 128);
    fill(magenta, 320, 0, 800, 800, 128);
    const Place place = plates::tellingPlace({&cyan, &magenta}, kDpi, 1);
    EXPECT_NEAR(place.left + 0.5, 4, 0.2);
}

// Two strips with a gap between them: together they are most, but only the gap would be in the middle.
TEST(MeasuringPlaces, TheLoupesMiddleIsNotInAGap)
{
    TintPlate plate = blank(800, 800);
    fill(plate, 360, 300, 385, 500, 128);
    fill(plate, 415, 300, 440, 500, 128);
    const Place place = plates::tellingPlace({&plate}, kDpi, 1);
    EXPECT_GT(plates::tellingShare(plate, kDpi, plates::middleOf(place)), 0.3);
    EXPECT_DOUBLE_EQ(plates::middleOf({1, 2, 4, 8}).left, 2.5);
    EXPECT_DOUBLE_EQ(plates::middleOf({1, 2, 4, 8}).top, 5);
    EXPECT_DOUBLE_EQ(plates::middleOf({1, 2, 4, 8}).height, 2);
}

TEST(MeasuringPlaces, TheLoupeStaysOnASmallPage)
{
    TintPlate plate = blank(50, 30);
    const Place place = plates::tellingPlace({&plate}, kDpi, 1);
    EXPECT_DOUBLE_EQ(place.left, 0);
    EXPECT_DOUBLE_EQ(place.top, 0);
    EXPECT_DOUBLE_EQ(place.width, 0.5);
    EXPECT_DOUBLE_EQ(place.height, 0.3);
    EXPECT_TRUE(plates::tellingPlace({}, kDpi, 1).empty());
}

}  // namespace
