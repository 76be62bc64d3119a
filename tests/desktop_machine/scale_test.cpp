#include "desktop/scale.h"

using toolbox::desktop::chooseScale;

namespace {

TEST(ScaleTest, WhatWasAskedForCountsFirst)
{
    EXPECT_EQ(chooseScale({.wanted = 3, .environment = "1", .toolkitScale = "2", .pixelsPerPoint = 2}), 3);
    EXPECT_EQ(chooseScale({.environment = "1", .toolkitScale = "3", .pixelsPerPoint = 2, .dotsPerInch = 300}), 1);
}

TEST(ScaleTest, WindowSystemsRatioThenToolkitsThenDensity)
{
    EXPECT_EQ(chooseScale({.toolkitScale = "3", .pixelsPerPoint = 2, .dotsPerInch = 300}), 2);
    EXPECT_EQ(chooseScale({.toolkitScale = "2", .dotsPerInch = 96}), 2);
    EXPECT_EQ(chooseScale({.dotsPerInch = 192}), 2);
}

TEST(ScaleTest, DensityGivesOneForEach96DotsPerInch)
{
    EXPECT_EQ(chooseScale({.dotsPerInch = 0}), 1);
    EXPECT_EQ(chooseScale({.dotsPerInch = 72}), 1);
    EXPECT_EQ(chooseScale({.dotsPerInch = 143}), 1);
    EXPECT_EQ(chooseScale({.dotsPerInch = 144}), 2);
    EXPECT_EQ(chooseScale({.dotsPerInch = 288}), 3);
    EXPECT_EQ(chooseScale({.dotsPerInch = 900}), 3);
}

TEST(ScaleTest, RatiosBetweenAreRounded)
{
    EXPECT_EQ(chooseScale({.pixelsPerPoint = 1.25}), 1);
    EXPECT_EQ(chooseScale({.pixelsPerPoint = 1.5}), 2);
}

TEST(ScaleTest, TextThatIsNoScaleIsIgnored)
{
    for (const char *text : {"", "0", "-2", "two", "2x", "99999999999999999999"})
        EXPECT_EQ(chooseScale({.environment = text, .toolkitScale = text, .dotsPerInch = 192}), 2) << text;
    EXPECT_EQ(chooseScale({.environment = "7"}), 3);
}

}  // namespace
