#include "desktop/scale.h"
#include "desktop/x_resources.h"

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

TEST(ScaleTest, WhatIsSetForOtherProgramsCountsBeforeTheDensity)
{
    EXPECT_EQ(chooseScale({.toolkitScale = "3", .toolkitFactor = "2", .wantedDotsPerInch = 96}), 3);
    EXPECT_EQ(chooseScale({.toolkitFactor = "1.5", .wantedDotsPerInch = 96, .dotsPerInch = 96}), 2);
    EXPECT_EQ(chooseScale({.toolkitFactor = "1.4", .dotsPerInch = 288}), 1);
    EXPECT_EQ(chooseScale({.wantedDotsPerInch = 192, .dotsPerInch = 96}), 2);
    for (const char *wrong : {"", "two", "0", "-2", "2x", "nan", "inf", "1e9"})
        EXPECT_EQ(chooseScale({.toolkitFactor = wrong, .dotsPerInch = 192}), 2) << wrong;
}

TEST(ScaleTest, XftDpiIsFoundAmongTheResources)
{
    using toolbox::desktop::xftDotsPerInch;
    EXPECT_EQ(xftDotsPerInch("Xft.antialias:\t1\nXft.dpi:\t192\nXft.hinting:\t1\n"), 192);
    EXPECT_EQ(xftDotsPerInch("Xft.dpi: 120.5"), 120.5);
    for (const char *none :
         {"", "Xft.antialias:\t1\n", "*Xft.dpi:\t192\n", "Xft.dpi:\tmany\n", "Xft.dpi:\t-96\n", "\n"})
        EXPECT_EQ(xftDotsPerInch(none), 0) << none;
}
