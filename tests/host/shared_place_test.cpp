// Where plates print over each other.
#include "looking/pictures/shared_place.h"
#include "support/toolbox_test.h"

namespace {

namespace looking = riders::looking;

using looking::InkBlocks;
using riders::plates::Place;
using riders::plates::TintPlate;

constexpr double kDpi = 160;  // blocks are of 8 pixels

TintPlate blank(int width, int height)
{
    return {width, height, std::vector<std::uint8_t>(static_cast<size_t>(width) * static_cast<size_t>(height))};
}

void fill(TintPlate &plate, int left, int top, int side, std::uint8_t ink = 128)
{
    for (int y = top; y < top + side; ++y)
        std::fill_n(plate.ink.begin() + y * plate.width + left, side, ink);
}

// Two plates of 3 by 2 inches with a tint of half an inch over each other at (1.5, 0.75), and one each elsewhere.
struct Overlapping {
    Overlapping()
    {
        for (TintPlate *plate : {&one, &other})
            fill(*plate, 240, 120, 80);
        fill(one, 0, 0, 110);
        fill(other, 350, 200, 110);
    }
    TintPlate one = blank(480, 320), other = blank(480, 320);
};

TEST(SharedPlace, TheAreaIsWhereAllPlatesHaveTints)
{
    const Overlapping plates;
    TintPlate full = blank(480, 320);
    fill(full, 80, 0, 320, 255);
    const InkBlocks one = looking::inkBlocks(plates.one, kDpi), other = looking::inkBlocks(plates.other, kDpi),
                    solid = looking::inkBlocks(full, kDpi);
    EXPECT_NEAR(looking::sharedArea({&one, &other}), 0.25, 0.001);
    EXPECT_GT(looking::sharedArea({&one}), 0.65);
    EXPECT_EQ(looking::sharedArea({&one, &solid}), 0) << "solid ink has no dots";
    EXPECT_EQ(looking::sharedArea({&one, &other, &solid}), 0);
    const InkBlocks tiny = looking::inkBlocks(blank(3, 3), kDpi);
    EXPECT_EQ(looking::sharedArea({&tiny, &tiny}), 0);
}

TEST(SharedPlace, IsWhereThereIsMostOfIt)
{
    Overlapping plates;
    fill(plates.one, 440, 152, 24);  // less, further to the right
    fill(plates.other, 440, 152, 24);
    const InkBlocks one = looking::inkBlocks(plates.one, kDpi), other = looking::inkBlocks(plates.other, kDpi);
    const Place place = looking::sharedPlace({&one, &other}, 0.5);
    EXPECT_NEAR(place.left, 1.5, 1e-9);
    EXPECT_NEAR(place.top, 0.75, 1e-9);
    EXPECT_EQ(place.width, 0.5);
    const Place all = looking::sharedPlace({&one, &other}, 10);
    EXPECT_EQ(all.left, 0);
    EXPECT_EQ(all.width, 3);
    EXPECT_EQ(all.height, 2);
    const InkBlocks tiny = looking::inkBlocks(blank(3, 3), kDpi);
    EXPECT_NEAR(looking::sharedPlace({&tiny, &tiny}, 1).width, 3 / kDpi, 1e-9);
}

}  // namespace
