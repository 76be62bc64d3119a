// `riders play`: the mouse bit by bit, keys held, displays that change.
#include "host/play_fixture.h"
#include "play/displays.h"
#include "toolbox/host/picture.h"

namespace {

namespace play = riders::play;

// The settings dialog on a small display; the angle's popup is item 5.
const char *const onSmallDisplay = "start\ncommand 0\n";
const std::vector<std::string> kSmallDisplay = {"--screen", "512x342x8"};

}  // namespace

TEST_F(Play, TheMouseIsHeldWhileAMenuIsLookedAt)
{
    CommandResult result =
        play(std::string(onSmallDisplay) + "hold 5\npicture first\nmove 250 48\npicture second\nup\nkey escape\n",
             kSmallDisplay);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(firstNotTraced({"popup 16137 opened at item 6", "picture \"first.png\"", "picture \"second.png\"",
                              "popup 16137 gave", "dialog 16300 closed"}),
              "")
        << trace();
    EXPECT_FALSE(contentsOf(folder / "first.png") == contentsOf(folder / "second.png"))
        << "another item is marked";
}

TEST_F(Play, PressMoveAndReleaseAtPointsAreADrag)
{
    const std::string byHand =
        std::string(onSmallDisplay) + "down 300 115\nmove 300 131\nup 300 147\nkey escape\n";
    const std::string atOnce = std::string(onSmallDisplay) + "drag 300 115 300 147\nkey escape\n";
    for (const std::string &script : {byHand, atOnce}) {
        std::filesystem::remove_all(folder / "preferences");
        CommandResult result = play(script, kSmallDisplay);
        EXPECT_EQ(result.err, "");
        EXPECT_TRUE(traced("popup 16137 gave 8")) << trace();
    }
}

TEST_F(Play, AHeldButtonIsNotPressedAgain)
{
    EXPECT_NE(play(std::string(onSmallDisplay) + "hold 5\npress 2\n")
                  .err.find("session.play:4: the mouse button is held down"),
              std::string::npos);
    EXPECT_NE(play(std::string(onSmallDisplay) + "up 10 10\n")
                  .err.find("session.play:3: the mouse button is not held down"),
              std::string::npos);
    EXPECT_NE(play(std::string(onSmallDisplay) + "hold 5\n").err.find("session.play:3: the script ended"),
              std::string::npos);
}

TEST_F(Play, AHeldKeyRepeats)
{
    CommandResult result = play("start\ncommand 0\nchoose 4 Other...\ntype 1234567\nrepeat backspace 4\n"
                                "key return\nkey return\nsave made\n");
    EXPECT_EQ(result.err, "");
    EXPECT_NE(contentsOf(folder / "made").find("riderFrequency 12 def"), std::string::npos)
        << "one and four more are gone";
}

TEST_F(Play, DisplaysChangeWhileADialogIsOpen)
{
    CommandResult result = play("start\ncommand 0\npicture usual\nresize 800 600\npicture large\n"
                                "screens 640x480x8+300x200x1\npicture two screen 2\nkey escape\n");
    EXPECT_EQ(result.err, "");
    toolbox::Picture large = toolbox::readPng(folder / "large.png"), two = toolbox::readPng(folder / "two.png");
    EXPECT_EQ(toolbox::readPng(folder / "usual.png").width, 640);
    EXPECT_EQ(large.width, 800);
    EXPECT_EQ(large.height, 600);
    EXPECT_EQ(two.width, 300);
    EXPECT_EQ(two.height, 200);
}

TEST_F(Play, AScaleMakesPicturesLargerAndNothingElse)
{
    CommandResult result = play("start\ncommand 0\nscale 2\npicture whole\npicture part dialog\nscale 3\n"
                                "picture thrice\nclick 445 305\nscale 1\npicture once\nkey escape\n");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(toolbox::readPng(folder / "whole.png").width, 1280);
    EXPECT_EQ(toolbox::readPng(folder / "part.png").width, 2 * (392 + 14));
    EXPECT_EQ(toolbox::readPng(folder / "thrice.png").width, 1920);
    EXPECT_EQ(toolbox::readPng(folder / "once.png").width, 640);
    EXPECT_EQ(play("start\ncommand 0\npicture twice\nkey escape\n", {"--screen", "640x480x8@2"}).err, "");
    EXPECT_TRUE(contentsOf(folder / "twice.png") == contentsOf(folder / "whole.png"));
}

TEST_F(Play, APictureOfTheDialogIsCutOut)
{
    CommandResult result = play("start\ncommand 0\npicture part dialog\nkey escape\n");
    EXPECT_EQ(result.err, "");
    toolbox::Picture part = toolbox::readPng(folder / "part.png");
    EXPECT_EQ(part.width, 392 + 14) << "5 of frame and 2 around it on each side";
    EXPECT_EQ(part.height, 252 + 14 + 18) << "and the title bar";
}

TEST_F(Play, APictureNeedsItsDisplay)
{
    EXPECT_NE(play("start\ncommand 0\npicture x screen 2\n").err.find("session.play:3: there is no screen 2"),
              std::string::npos);
    EXPECT_NE(play("start\npicture x dialog\n").err.find("session.play:2: no dialog is open"), std::string::npos);
}

TEST_F(Play, WrongDisplaysAreFoundBeforeAnythingIsDone)
{
    for (const char *step : {"resize 10 400", "resize 400", "scale 0", "scale 4", "screens 640x480", "screens",
                             "repeat x", "repeat x 0", "move 1", "drag 1 2 3", "picture x screen 0"}) {
        CommandResult result = play("start\n" + std::string(step) + "\n");
        EXPECT_EQ(result.status, 1) << step;
        EXPECT_EQ(result.err.rfind("riders play: session.play:2: ", 0), 0u) << step << ": " << result.err;
        EXPECT_EQ(trace().find("entry 1/0"), std::string::npos) << step;
    }
}

TEST_F(Play, WhatCannotBeDraggedComesUpOnADisplayThatIsThere)
{
    const std::string leave = "start\ncommand 0\ndrag 300 98 1000 200\npress 2\n";
    CommandResult result = play(leave + "screens 480x320x8\ncommand 0\nkey return\ncancel-file\n",
                                {"--screen", "640x480x8+640x480x8"});
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(firstNotTraced(
                  {"dialog 16300 shown at 124,112 ", "dialog 16300 shown at 824,214 ", "dialog 16399 shown at "}),
              "")
        << trace();
}

TEST_F(Play, ALongPopupIsScrolledToTheItem)
{
    CommandResult result = play("start\ncommand 0\nchoose 4 Other...\nkey escape\nchoose 4 2\nchoose 4 20\n"
                                "choose 4 1\nkey escape\n",
                                kSmallDisplay);
    EXPECT_EQ(result.err, "") << "21 items do not fit on 342 pixels";
    EXPECT_EQ(firstNotTraced({"popup 16136 gave 21", "popup 16136 gave 2", "popup 16136 gave 20",
                              "popup 16136 gave 1", "dialog 16300 closed"}),
              "")
        << trace();
}

TEST(Displays, AreReadFromLeftToRight)
{
    auto displays = play::displaysFromText("640x480x8+1024x768x1");
    ASSERT_EQ(displays.size(), 2u);
    EXPECT_EQ(displays[0].bounds.right, 640);
    EXPECT_EQ(displays[0].depth, 8);
    EXPECT_EQ(displays[1].bounds.left, 640);
    EXPECT_EQ(displays[1].bounds.right, 1664);
    EXPECT_EQ(displays[1].bounds.bottom, 768);
    EXPECT_EQ(displays[1].depth, 1);
    EXPECT_EQ(displays[1].scale, 1);
}

TEST(Displays, HaveAScaleWhenOneIsGiven)
{
    auto displays = play::displaysFromText("640x480x8@2+300x200x1+100x100x32@3");
    ASSERT_EQ(displays.size(), 3u);
    EXPECT_EQ(displays[0].scale, 2);
    EXPECT_EQ(displays[0].bounds.right, 640);
    EXPECT_EQ(displays[1].scale, 1);
    EXPECT_EQ(displays[2].scale, 3);
    EXPECT_EQ(displays[2].bounds.left, 940);
}

TEST(Displays, AnyOtherTextIsRefused)
{
    for (const char *text :
         {"", "640", "640x480", "640x480x3", "640x480x8+", "x480x8", "640x480x8 ", "10x480x8", "640x99999x8",
          "-640x480x8", "640x480x8@", "640x480x8@0", "640x480x8@4", "640x480x8@2x"})
        EXPECT_TRUE(play::displaysFromText(text).empty()) << text;
}
