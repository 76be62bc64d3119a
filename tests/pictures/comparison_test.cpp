// The comparison of pictures finds what it is meant to find.
#include <gtest/gtest.h>

#include "pictures/comparison.h"
#include "pictures/kept_pictures.h"
#include "support/command.h"
#include "support/toolbox_test.h"
#include "toolbox/host/picture.h"

namespace fs = std::filesystem;

namespace {

toolbox::Picture plainPicture(int width, int height, std::uint32_t pixel = 0xFFFFFF)
{
    return {width, height, std::vector<std::uint32_t>(static_cast<std::size_t>(width * height), pixel)};
}

class Kept : public ::testing::Test {
protected:
    Kept() { fs::create_directories(folder / "expected"); }

    std::string difference(const toolbox::Picture &now)
    {
        toolbox::writePng(folder / "now.png", now);
        return kept.difference("box", folder / "now.png");
    }
    bool left(const std::string &which) const { return fs::exists(folder / "leavings" / ("box." + which + ".png")); }

    TemporaryFolder folder;
    KeptPictures kept{folder / "expected", folder / "leavings"};
};

TEST(Comparison, EqualPicturesDoNotDiffer)
{
    PictureDifference found = comparison(plainPicture(4, 3), plainPicture(4, 3));
    EXPECT_TRUE(found.same());
    EXPECT_EQ(found.text(), "no pixel differs");
}

TEST(Comparison, ReportsHowManyDifferAndTheFirstWithBothValues)
{
    toolbox::Picture now = plainPicture(4, 3);
    now.pixels[4 * 1 + 2] = 0x123456;
    now.pixels[4 * 2 + 0] = 0;
    PictureDifference found = comparison(plainPicture(4, 3), now);
    EXPECT_FALSE(found.same());
    EXPECT_EQ(found.text(), "2 of 12 pixels differ, the first at 2,1: kept 0xFFFFFF, now 0x123456");
}

TEST(Comparison, ReportsSizesThatDiffer)
{
    EXPECT_EQ(comparison(plainPicture(4, 3), plainPicture(5, 2)).text(),
              "kept 4x3, now 5x2; 6 of 15 pixels differ");
    toolbox::Picture now = plainPicture(5, 3);
    now.pixels[0] = 0;
    EXPECT_EQ(comparison(plainPicture(4, 3), now).text(),
              "kept 4x3, now 5x3; 4 of 15 pixels differ, the first at 0,0: kept 0xFFFFFF, now 0x000000");
}

TEST(Comparison, ItsPictureIsRedWhereTheyDiffer)
{
    toolbox::Picture now = plainPicture(3, 2, 0);
    now.pixels[1] = 0xFFFFFF;
    toolbox::Picture shown = differencePicture(plainPicture(2, 2, 0), now);
    const std::uint32_t red = 0xFF0000, pale = 0xC0C0C0;
    EXPECT_EQ(shown.pixels, (std::vector<std::uint32_t>{pale, red, red, pale, pale, red}));
}

TEST_F(Kept, ThePictureThatIsKeptPassesAndLeavesNothing)
{
    toolbox::writePng(folder / "expected/box.png", plainPicture(4, 3));
    EXPECT_EQ(difference(plainPicture(4, 3)), "");
    EXPECT_FALSE(fs::exists(folder / "leavings"));
}

TEST_F(Kept, ADifferingPictureLeavesThreeToLookAt)
{
    toolbox::writePng(folder / "expected/box.png", plainPicture(4, 3));
    std::string words = difference(plainPicture(4, 3, 0x00FF00));
    EXPECT_EQ(words.rfind("box: 12 of 12 pixels differ, the first at 0,0: kept 0xFFFFFF, now 0x00FF00; look at ", 0),
              0u)
        << words;
    EXPECT_NE(words.find((folder / "leavings/box.*.png").string()), std::string::npos) << words;
    EXPECT_EQ(toolbox::readPng(folder / "leavings/box.expected.png").pixels, plainPicture(4, 3).pixels);
    EXPECT_EQ(toolbox::readPng(folder / "leavings/box.actual.png").pixels, plainPicture(4, 3, 0x00FF00).pixels);
    EXPECT_EQ(toolbox::readPng(folder / "leavings/box.difference.png").pixels, plainPicture(4, 3, 0xFF0000).pixels);
}

TEST_F(Kept, AMissingPictureFailsAndIsNotMade)
{
    std::string words = difference(plainPicture(4, 3));
    EXPECT_EQ(words.rfind("box: no picture is kept as ", 0), 0u) << words;
    EXPECT_TRUE(left("actual"));
    EXPECT_FALSE(fs::exists(folder / "expected/box.png"));
}

TEST_F(Kept, APictureThatWasNotTakenFails)
{
    toolbox::writePng(folder / "expected/box.png", plainPicture(4, 3));
    EXPECT_NE(kept.difference("box", folder / "nothing.png").find("there is no picture"), std::string::npos);
}

TEST_F(Kept, UpdatingKeepsWhatIsShownNowAndNamesIt)
{
    const std::vector<std::string> update = {RIDERS_SOURCE_DIR "/tests/pictures/update", folder / "leavings",
                                             folder / "expected"};
    EXPECT_EQ(runProgram(update).out, "No picture differs from the one that is kept\n");
    difference(plainPicture(4, 3, 0x112233));
    CommandResult result = runProgram(update);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out.rfind("Kept " + (folder / "expected/box.png").string() + "\n", 0), 0u) << result.out;
    EXPECT_FALSE(left("actual"));
    EXPECT_EQ(difference(plainPicture(4, 3, 0x112233)), "");
}

TEST_F(Kept, WhatWasLeftGoesWhenThePictureIsRightAgain)
{
    toolbox::writePng(folder / "expected/box.png", plainPicture(4, 3));
    difference(plainPicture(4, 3, 0));
    EXPECT_TRUE(left("difference"));
    EXPECT_EQ(difference(plainPicture(4, 3)), "");
    EXPECT_FALSE(left("expected") || left("actual") || left("difference"));
}

}  // namespace
