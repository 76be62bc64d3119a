// The box opens, its picture grows, its lines appear.
#include "source/about_box.h"

namespace about {
namespace {

TEST_F(About, OpensAThirdDownTheDisplayWithTheIconAlone)
{
    for (int depth : {1, 4, 8, 32}) {
        useDepth(depth);
        open([&] {
            look([&] {
                EXPECT_TRUE(isHidden(1) && isHidden(2));
                EXPECT_EQ(isHidden(3), depth >= 8) << depth;
                EXPECT_EQ(isHidden(4), depth < 8) << depth;
                EXPECT_EQ(gDoIntro, 1);
                EXPECT_EQ(gGetScrollStr, 1);
                EXPECT_EQ(gWhichScrollString, 1);
                EXPECT_EQ(gScrollDelta, kWindowWidth);
                Rect text = ItemBox(gTheDialog, kTextArea);
                text.top += 25;
                EXPECT_TRUE(same(gScrollRect, text));
            });
        });
        EXPECT_TRUE(traced("dialog 16200 shown at 195,108 250x156"));
        EXPECT_TRUE(traced("dialog 16200 hidden"));
        EXPECT_TRUE(traced("dialog 16200 closed"));
        EXPECT_EQ(gTheAboutRgn, nullptr);
        EXPECT_EQ(gTheDialog, nullptr);
    }
}

TEST_F(About, IntroRunsOnTheFifteenthPass)
{
    open([&] {
        look([&] {
            gPreIntroCounter = 0;
            drawn.clear();
            EventRecord nothing{};
            int16_t hit = 7;
            for (int pass = 1; pass <= 14; ++pass) {
                EXPECT_FALSE(AboutFilter(gTheDialog, &nothing, &hit));
                EXPECT_EQ(gDoIntro, 1) << "pass " << pass;
            }
            EXPECT_TRUE(drawn.empty()) << drawn.front();
            EXPECT_EQ(machine.soundsPlayed(), 0);
            EXPECT_FALSE(AboutFilter(gTheDialog, &nothing, &hit));
            EXPECT_EQ(gDoIntro, 0);
            EXPECT_GE(drawnWith("picture ").size(), 22u);
            EXPECT_EQ(machine.soundsPlayed(), 1);
            EXPECT_EQ(hit, 0);
        });
    });
}

TEST_F(About, QuietBeforeTheIntroLastsAboutFifteenTicks)
{
    removeResource('snd ', 16500);
    uint32_t opened = 0, over = 0;
    open([&] {
        look([&] { opened = machine.ticks(); });
        for (int i = 0; i < 40; ++i) {
            user.wait(1);
            look([&] {
                if (over == 0 && !gDoIntro)
                    over = machine.ticks();
            });
        }
    });
    EXPECT_GE(over - opened, 22u + 10u);
    EXPECT_LE(over - opened, 22u + 16u);
}

TEST_F(About, PassesAreCountedToSixteen)
{
    open([&] {
        user.wait(200);
        look([] { EXPECT_EQ(gPreIntroCounter, 16); });
    });
}

TEST_F(About, IntroGrowsThePictureInTwentyTwoSteps)
{
    for (int depth : {1, 8}) {
        useDepth(depth);
        open([&] {
            user.wait(kIntroLong);
            look([&] {
                EXPECT_FALSE(isHidden(depth < 8 ? 1 : 2));
                EXPECT_TRUE(isHidden(depth < 8 ? 2 : 1));
                EXPECT_TRUE(same(ItemBox(gTheDialog, depth < 8 ? 1 : 2), kFullPicture));
            });
        });
        std::vector<std::string> steps = drawnWith("picture ");
        // The icon's own pictures, and those that updates draw afterwards.
        std::erase_if(steps, [](const std::string &line) { return line.starts_with("15,"); });
        ASSERT_GE(steps.size(), 22u);
        for (int step = 1; step <= 22; ++step) {
            Rect box = {static_cast<int16_t>(kFullPicture.top + 22 - step),
                        static_cast<int16_t>(kFullPicture.left + 88 - 4 * step),
                        static_cast<int16_t>(kFullPicture.bottom - 22 + step),
                        static_cast<int16_t>(kFullPicture.right - 88 + 4 * step)};
            EXPECT_EQ(steps[static_cast<size_t>(step) - 1], asText(box)) << "step " << step << ", depth " << depth;
        }
    }
}

TEST_F(About, EachStepOfTheIntroLastsATick)
{
    removeResource('snd ', 16500);
    uint32_t before = 0, after = 0;
    open([&] {
        for (int i = 0; i < 60; ++i) {
            user.wait(1);
            look([&] {
                if (gDoIntro)
                    before = machine.ticks();
                else if (after == 0)
                    after = machine.ticks();
            });
        }
    });
    EXPECT_GE(after - before, 22u);
    EXPECT_LE(after - before, 25u);
}

TEST_F(About, SoundIsPlayedOncePerOpening)
{
    open([&] { user.wait(300); });
    EXPECT_EQ(machine.soundsPlayed(), 1);
    open([&] { user.wait(300); });
    EXPECT_EQ(machine.soundsPlayed(), 2);
}

TEST_F(About, SoundIsReleasedAgain)
{
    // One that may not be purged counts as loaded until it is released.
    HNoPurge(Get1Resource('snd ', 16500));
    ASSERT_EQ(leftBehind().loadedResources, 1);
    open([&] { user.wait(kIntroLong); });
    EXPECT_EQ(leftBehind().loadedResources, 0);
}

TEST_F(About, SoundLastsLessThanASecond)
{
    Handle sound = Get1Resource('snd ', 16500);
    ASSERT_NE(sound, nullptr);
    uint32_t before = machine.ticks();
    EXPECT_EQ(SndPlay(nullptr, sound, false), noErr);
    EXPECT_LT(machine.ticks() - before, 60u);
    EXPECT_GT(machine.ticks() - before, 10u);
}

TEST_F(About, MissingSoundIsSkippedSilently)
{
    removeResource('snd ', 16500);
    open([&] {
        user.wait(kIntroLong);
        look([] { EXPECT_EQ(gDoIntro, 0); });
    });
    EXPECT_EQ(machine.soundsPlayed(), 0);
    EXPECT_EQ(machine.beeps(), 0);
    EXPECT_FALSE(traced("params"));
}

TEST_F(About, SoundThatCannotBePlayedIsSkippedToo)
{
    replaceResource('snd ', 16500, "no sound");
    open([&] { user.wait(kIntroLong); });
    EXPECT_EQ(machine.soundsPlayed(), 0);
    EXPECT_FALSE(ended);
}

TEST_F(About, LinesStandCentredBelowThePicture)
{
    struct Line {
        std::string words;
        int baseline;
        const char *style;
    };
    std::vector<Line> expected = {{text(16200, 1) + kPluginVersion, 31, "face 1"},
                                  {text(16200, 2), 48, "face 0"},
                                  {text(16200, 5), 60, "face 0"},
                                  {text(16200, 3), 72, "face 0"}};
    std::vector<int> widths;
    int top = 0;
    open([&] {
        user.wait(kIntroLong);
        look([&] {
            top = ItemBox(gTheDialog, kTextArea).top;
            for (const Line &line : expected) {
                TextFont(3);
                TextSize(9);
                TextFace(line.baseline == 31 ? bold : normal);
                widths.push_back(StringWidth(P(line.words)));
            }
            TextFont(0);
            TextSize(0);
            TextFace(0);
        });
    });
    std::vector<std::string> texts = drawnWith("text ");
    ASSERT_GE(texts.size(), expected.size());
    for (size_t i = 0; i < expected.size(); ++i) {
        std::string place = std::to_string((kWindowWidth - widths[i]) / 2) + "," +
                            std::to_string(top + expected[i].baseline);
        EXPECT_EQ(texts[i], place + " \"" + expected[i].words + "\" font 3 size 9 " + expected[i].style + " color 33");
    }
}

TEST_F(About, TextSettingsAreResetAfterTheLines)
{
    open([&] {
        user.wait(kIntroLong);
        look([] {
            GrafPtr port = gTheDialog;
            EXPECT_EQ(port->txFont, 0);
            EXPECT_EQ(port->txSize, 0);
            EXPECT_EQ(port->txFace, 0);
        });
    });
}

TEST_F(About, UpdateDrawsTheLinesUnlessTheyMove)
{
    open([&] {
        user.wait(kIntroLong);
        look([&] {
            SetPort(gTheDialog);
            struct {
                Boolean intro, scroll;
                size_t lines;
            } const states[] = {{false, false, 4}, {false, true, 0}, {true, false, 0}};
            for (const auto &state : states) {
                gDoIntro = state.intro;
                gScrollInProg = state.scroll;
                drawn.clear();
                AboutProc(gTheDialog, kPictureArea);
                EXPECT_EQ(drawnWith("text ").size(), state.lines) << int{state.intro} << int{state.scroll};
            }
            gDoIntro = gScrollInProg = false;
        });
    });
}

TEST_F(About, TitleCanStandAlone)
{
    open([&] {
        user.wait(kIntroLong);
        look([&] {
            drawn.clear();
            SetPort(gTheDialog);
            DoAboutInfo(true);
            EXPECT_EQ(drawnWith("text ").size(), 1u);
            EXPECT_EQ(drawnWith("eraseRect ").front(), asText(ItemBox(gTheDialog, kTextArea)));
        });
    });
}

}  // namespace
}  // namespace about
