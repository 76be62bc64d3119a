#include "support/plugin_test.h"

#include <algorithm>
#include <cstdio>

#include "dialogItems.h"
#include "ktAboutDlg.h"
#include "ktFreqDlg.h"
#include "toolbox/host/picture.h"
#include "toolbox/memory.h"
#include "toolbox/system.h"

namespace {

constexpr int kAbout = 16200, kPanel = 17000, kSettings = 16300;
constexpr int kPictureArea = 5, kTextArea = 6;
constexpr Rect kFullPicture = {20, 59, 64, 235};
constexpr int kWindowWidth = 250;
constexpr int kIntroLong = 20;   // ticks after which the intro has begun, and so is over
constexpr int kCheckBox = 4;

bool isHidden(int16_t item)
{
    return ItemBox(gTheDialog, item).left > 8192;
}

std::string asText(const Rect &r)
{
    char text[48];
    std::snprintf(text, sizeof text, "%d,%d,%d,%d", r.left, r.top, r.right, r.bottom);
    return text;
}

bool same(const Rect &a, const Rect &b)
{
    return EqualRect(&a, &b);
}

class About : public PluginTest {
protected:
    void SetUp() override
    {
        PluginTest::SetUp();
        watchDrawing();
    }

    void watchDrawing() { toolbox::trace::setDrawingSink(toolbox::trace::into(drawn)); }

    void useDepth(int depth)
    {
        machine.setScreens({{{0, 0, 480, 640}, depth}});
        restartPlugin();
        watchDrawing();
    }

    // Opens the box, lets the steps happen, and closes it when they leave it
    // open.
    void open(const std::function<void()> &steps, bool closes = false)
    {
        user.forgetRest();
        user.in(kAbout);
        steps();
        user.in(0);
        if (!closes)
            user.key("return");
        drawn.clear();
        EXPECT_EQ(call(kSelectAbout), 0);
        EXPECT_TRUE(user.idle());
    }

    // What was drawn that begins so, in order, without that beginning.
    std::vector<std::string> drawnWith(const std::string &beginning) const
    {
        std::vector<std::string> found;
        for (const std::string &line : drawn)
            if (line.starts_with(beginning))
                found.push_back(line.substr(beginning.size()));
        return found;
    }

    // Runs something in the middle of the session.
    void look(const std::function<void()> &action) { user.then(action); }

    std::vector<std::string> drawn;
};

// --- Opening ----------------------------------------------------------------

TEST_F(About, OpensAThirdDownTheScreenWithTheIconAlone)
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

// --- The intro --------------------------------------------------------------

TEST_F(About, IntroRunsOnTheFifteenthPass)
{
    size_t passes = 0;
    open([&] {
        for (int i = 0; i < 40; ++i) {
            user.wait(1);
            look([&] {
                bool over = gPreIntroCounter >= 15;
                EXPECT_EQ(gDoIntro, !over) << "after pass " << gPreIntroCounter;
                std::vector<std::string> pictures = drawnWith("picture ");
                std::erase_if(pictures, [](const std::string &line) { return line.starts_with("15,"); });
                EXPECT_EQ(pictures.size() >= 22, over);
                EXPECT_EQ(machine.soundsPlayed(), over ? 1 : 0);
                passes += !over;
            });
        }
    });
    EXPECT_GE(passes, 10u) << "about fifteen ticks of quiet";
    EXPECT_LE(passes, 15u);
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

TEST_F(About, SoundIsPlayedOnceAnOpening)
{
    open([&] { user.wait(300); });
    EXPECT_EQ(machine.soundsPlayed(), 1);
    open([&] { user.wait(300); });
    EXPECT_EQ(machine.soundsPlayed(), 2);
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

TEST_F(About, MissingSoundIsPassedOverInSilence)
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

TEST_F(About, SoundThatCannotBePlayedIsPassedOverToo)
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
    std::vector<Line> expected = {{text(16200, 1) + "1.0", 31, "face 1"},
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

// --- The icon ---------------------------------------------------------------

TEST_F(About, IconIsStretchedAndFallsOutOfTheWindow)
{
    for (int depth : {1, 8}) {
        useDepth(depth);
        Rect icon{}, text{}, strip{};
        int16_t bottom = 0, number = depth < 8 ? 3 : 4;
        open([&] {
            user.wait(kIntroLong);
            look([&] {
                icon = ItemBox(gTheDialog, number);
                text = ItemBox(gTheDialog, kTextArea);
                strip = ItemBox(gTheDialog, 7);
                bottom = gTheDialog->portRect.bottom;
                drawn.clear();
            });
            user.press(kPictureArea);
            look([&] {
                EXPECT_EQ(gIconDone, 1);
                EXPECT_EQ(gDoIntro, 0);
                EXPECT_TRUE(same(ItemBox(gTheDialog, kTextArea), text)) << "put back";
                EXPECT_TRUE(same(ItemBox(gTheDialog, 7), strip)) << "put back";
            });
        });
        std::vector<std::string> expected;
        while (icon.bottom < bottom - 50) {
            icon.bottom += 6;
            expected.push_back(asText(icon));
        }
        while (icon.top < bottom + 10) {
            icon.top += 4;
            icon.bottom += 8;
            expected.push_back(asText(icon));
        }
        // Below the window there is nothing to be seen.
        std::erase_if(expected, [&](const std::string &box) {
            return std::stoi(box.substr(box.find(',') + 1)) >= bottom;
        });
        std::vector<std::string> steps = drawnWith("picture ");
        std::erase_if(steps, [](const std::string &line) { return !line.starts_with("15,"); });
        EXPECT_GT(expected.size(), 20u);
        EXPECT_EQ(steps, expected) << "depth " << depth;
        EXPECT_EQ(drawnWith("eraseRect ").front(), asText(text));
    }
}

// The lines are moved away by their left edges and are not drawn while the icon
// comes by.
TEST_F(About, NoLineIsDrawnWhileTheIconFalls)
{
    open([&] {
        user.wait(kIntroLong);
        look([&] { drawn.clear(); });
        user.press(kPictureArea);
    });
    bool falling = false;
    int meanwhile = 0, fallen = 0;
    for (const std::string &line : drawn) {
        falling = falling || line.starts_with("picture 15,");
        if (line.starts_with("eraseRgn 59,20"))
            break;
        meanwhile += falling && line.starts_with("text ");
        fallen += line.starts_with("picture 15,");
    }
    EXPECT_GT(fallen, 20);
    EXPECT_EQ(meanwhile, 0);
}

TEST_F(About, PictureNarrowsAwayAfterTheFall)
{
    for (int depth : {1, 8}) {
        useDepth(depth);
        open([&] {
            user.wait(kIntroLong);
            look([&] { drawn.clear(); });
            user.press(kPictureArea);
            look([&] {
                Rect left = ItemBox(gTheDialog, depth < 8 ? 1 : 2);
                EXPECT_EQ(asText(left), "147,42,147,42");
            });
        });
        std::vector<std::string> strips = drawnWith("eraseRgn ");
        ASSERT_GE(strips.size(), 22u);
        strips.erase(strips.begin(), strips.end() - 22);
        for (int step = 0; step < 22; ++step) {
            Rect outer = {static_cast<int16_t>(kFullPicture.top + step), static_cast<int16_t>(kFullPicture.left + 4 * step),
                          static_cast<int16_t>(kFullPicture.bottom - step),
                          static_cast<int16_t>(kFullPicture.right - 4 * step)};
            EXPECT_EQ(strips[static_cast<size_t>(step)], asText(outer)) << "step " << step;
        }
        EXPECT_EQ(machine.soundsPlayed() % 2, depth == 1 ? 1 : 0) << "the intro's only";
    }
}

TEST_F(About, NothingOfPictureAndIconIsLeft)
{
    open([&] {
        user.wait(kIntroLong);
        user.press(kPictureArea);
        user.wait(5);
        look([] {
            toolbox::Picture screen = toolbox::screenPicture(0);
            for (int v = 108; v < 108 + 80; ++v)
                for (int h = 195; h < 195 + kWindowWidth; ++h)
                    ASSERT_EQ(screen.pixels[static_cast<size_t>(v * screen.width + h)], 0xFFFFFFu) << h << "," << v;
        });
    });
}

// --- The scrolling lines ----------------------------------------------------

class AboutScroll : public About {
protected:
    int widthOf(const std::string &line)
    {
        GrafPtr saved;
        GetPort(&saved);
        SetPort(nullptr);
        GrafPtr port;
        GetPort(&port);
        TextFont(3);
        TextSize(9);
        TextFace(bold + italic);
        int width = StringWidth(P(line));
        TextFont(0);
        TextSize(0);
        TextFace(0);
        SetPort(saved);
        return width;
    }

    // What the three lines draw from the first step to the last.
    std::vector<std::string> wholeScroll(const Rect &area)
    {
        std::vector<std::string> lines;
        for (int16_t i = 1; i <= 3; ++i) {
            std::string words = text(16201, i);
            lines.push_back("eraseRect " + asText(area));
            for (int delta = kWindowWidth - 3; delta > -widthOf(words); delta -= 2) {
                lines.push_back("scrollRect " + asText(area) + " by -2,0");
                lines.push_back("text " + std::to_string(delta) + "," + std::to_string(area.bottom - 22) + " \"" + words +
                                "\" font 3 size 9 face 3 color 409");
            }
        }
        return lines;
    }

    std::vector<std::string> scrolled() const
    {
        std::vector<std::string> lines;
        for (const std::string &line : drawn)
            if (line.starts_with("scrollRect") || line.find("face 3") != std::string::npos ||
                line == "eraseRect " + asText(area))
                lines.push_back(line);
        return lines;
    }

    void startScroll()
    {
        user.wait(kIntroLong);
        look([&] {
            area = gScrollRect;
            drawn.clear();
        });
        user.press(kPictureArea, controlKey);
    }

    Rect area{};
};

TEST_F(AboutScroll, ThreeLinesGoByTwoPixelsAStep)
{
    open([&] {
        startScroll();
        user.wait(900);
        look([&] {
            EXPECT_EQ(gScrollInProg, 0);
            EXPECT_EQ(gScrollDelta, kWindowWidth);
            EXPECT_EQ(gWhichScrollString, 1);
            EXPECT_EQ(gGetScrollStr, 1);
            GrafPtr port = gTheDialog;
            EXPECT_EQ(port->fgColor, 33);
            EXPECT_EQ(port->txMode, srcOr);
            EXPECT_EQ(port->txFace, 0);
        });
    });
    std::vector<std::string> expected = wholeScroll(area);
    std::vector<std::string> seen = scrolled();
    ASSERT_EQ(seen.size(), expected.size());
    for (size_t i = 0; i < expected.size(); ++i)
        ASSERT_EQ(seen[i], expected[i]) << "line " << i;
    EXPECT_EQ(drawnWith("text ").back().find(text(16200, 3)) != std::string::npos, true) << "lines drawn again";
}

TEST_F(AboutScroll, StepsComeWithTheIdleEvents)
{
    open([&] {
        startScroll();
        user.wait(10);
        look([&] {
            EXPECT_EQ(gScrollInProg, 1);
            EXPECT_LE(gScrollDelta, kWindowWidth - 1 - 2 * 9);
            EXPECT_GE(gScrollDelta, kWindowWidth - 1 - 2 * 15);
        });
    });
}

TEST_F(AboutScroll, AnotherScrollMayFollow)
{
    open([&] {
        startScroll();
        user.wait(900);
        look([&] { drawn.clear(); });
        user.press(kPictureArea, controlKey);
        user.wait(900);
        look([&] { EXPECT_EQ(scrolled(), wholeScroll(area)); });
    });
}

TEST_F(AboutScroll, LineLengthIsKeptAsMinusItsWidth)
{
    open([&] {
        startScroll();
        user.wait(20);
        look([&] {
            EXPECT_EQ(plain(gTheScrollStr), text(16201, 1));
            EXPECT_EQ(gScrollStrLen, -widthOf(text(16201, 1)));
        });
    });
}

TEST_F(AboutScroll, NothingOfTheTitleIsLeftInTheScroll)
{
    open([&] {
        startScroll();
        user.wait(2);
        look([] {
            toolbox::Picture screen = toolbox::screenPicture(0);
            Rect text = ItemBox(gTheDialog, kTextArea);
            for (int v = 108 + text.top; v < 108 + text.bottom; ++v)
                for (int h = 195; h < 195 + 200; ++h)
                    ASSERT_EQ(screen.pixels[static_cast<size_t>(v * screen.width + h)], 0xFFFFFFu) << h << "," << v;
        });
    });
}

// Drawn anew at each step over what was moved, it must not grow fatter.
TEST_F(AboutScroll, LineLooksTheSameAllTheWay)
{
    auto darkness = [] {
        toolbox::Picture screen = toolbox::screenPicture(0);
        long sum = 0;
        for (int v = 108 + gScrollRect.top; v < 108 + gScrollRect.bottom; ++v)
            for (int h = 195; h < 195 + kWindowWidth; ++h)
                sum += 255 - (screen.pixels[static_cast<size_t>(v * screen.width + h)] >> 16 & 255);
        return sum;
    };
    long early = 0;
    open([&] {
        startScroll();
        user.wait(80);
        look([&] { early = darkness(); });
        user.wait(30);
        look([&] { EXPECT_EQ(darkness(), early); });
    });
    EXPECT_GT(early, 0);
}

TEST_F(AboutScroll, LinesHaveThirtyOneCharactersAtMost)
{
    for (int16_t i = 1; i <= 5; ++i) {
        EXPECT_FALSE(text(16201, i).empty()) << i;
        EXPECT_LE(text(16201, i).size(), 31u) << i;
    }
    EXPECT_EQ(text(16201, 3), "Happy Bum Lives!");
}

// --- Clicks and keys --------------------------------------------------------

enum State { kBeforeIntro, kShowing, kScrolling, kFallen };
enum Outcome { kCloses, kOpensPanel, kFalls, kScrolls };

class AboutClick : public About {
protected:
    // Many sessions, and no pixel is looked at.
    void SetUp() override
    {
        machine.wantPictures(false);
        About::SetUp();
    }

    void reach(State state)
    {
        if (state != kBeforeIntro)
            user.wait(kIntroLong);
        if (state == kScrolling) {
            user.press(kPictureArea, controlKey);
            user.wait(30);
        }
        if (state == kFallen)
            user.press(kPictureArea);
    }

    static Outcome expected(State state, int modifiers, bool inside)
    {
        if (!inside)
            return kCloses;
        if (modifiers & optionKey && state != kFallen)
            return kOpensPanel;
        if (modifiers & controlKey && state != kFallen && state != kScrolling)
            return kScrolls;
        return state == kFallen || state == kScrolling ? kCloses : kFalls;
    }

    void check(State state, int modifiers, bool inside)
    {
        Outcome wanted = expected(state, modifiers, inside);
        bool closes = wanted == kCloses || wanted == kOpensPanel;
        trace.clear();
        open(
            [&] {
                reach(state);
                user.press(inside ? kPictureArea : kTextArea, static_cast<uint16_t>(modifiers));
                if (wanted == kOpensPanel) {
                    user.in(kPanel);
                    user.key("return");
                }
                if (closes)
                    return;
                if (state == kBeforeIntro)
                    user.wait(kIntroLong);
                user.wait(5);
                look([&] {
                    EXPECT_EQ(gIconDone, wanted == kFalls);
                    EXPECT_EQ(gScrollInProg, wanted == kScrolls);
                });
            },
            closes);
        EXPECT_EQ(traced("dialog 17000 shown"), wanted == kOpensPanel);
        EXPECT_FALSE(ended);
    }
};

TEST_F(AboutClick, EveryModifierInEveryState)
{
    for (State state : {kBeforeIntro, kShowing, kScrolling, kFallen})
        for (int modifiers : {0, int(cmdKey), int(shiftKey), int(optionKey), int(controlKey), optionKey | controlKey})
            for (bool inside : {true, false}) {
                SCOPED_TRACE("state " + std::to_string(state) + " modifiers " + std::to_string(modifiers) +
                             (inside ? " inside" : " outside"));
                check(state, modifiers, inside);
            }
}

TEST_F(AboutClick, ClickOnThePictureAfterTheFallCloses)
{
    check(kFallen, 0, true);
}

TEST_F(AboutClick, ClickOutsideThePictureAlwaysCloses)
{
    for (State state : {kBeforeIntro, kShowing, kScrolling, kFallen})
        check(state, 0, false);
}

TEST_F(AboutClick, OptionClickAfterTheFallOnlyCloses)
{
    check(kFallen, optionKey, true);
}

TEST_F(AboutClick, ReturnAndEnterCloseAtEveryMoment)
{
    for (const char *key : {"return", "enter"}) {
        for (uint32_t ticks = 0; ticks < 90; ticks += ticks < 24 ? 1 : 13)
            open(
                [&] {
                    user.wait(ticks);
                    user.key(key);
                },
                true);
        for (uint32_t ticks = 0; ticks < 700; ticks += 35)
            open(
                [&] {
                    reach(kShowing);
                    user.press(kPictureArea, controlKey);
                    user.wait(ticks);
                    user.key(key);
                },
                true);
        open(
            [&] {
                reach(kFallen);
                user.key(key);
            },
            true);
    }
    EXPECT_FALSE(traced("dialog 17000"));
    EXPECT_EQ(tracedTimes("dialog 16200 shown"), tracedTimes("dialog 16200 closed"));
}

TEST_F(AboutClick, OtherKeysDoNothing)
{
    open([&] {
        reach(kShowing);
        user.key("escape");
        user.key("a");
        user.key("space");
        user.key(".", cmdKey);
        user.wait(2);
        look([] { EXPECT_EQ(gAboutDone, 0); });
    });
}

TEST_F(AboutClick, NextOpeningStartsAfresh)
{
    open([&] { reach(kFallen); });
    open([&] {
        look([] {
            EXPECT_EQ(gIconDone, 0);
            EXPECT_EQ(gDoIntro, 1);
            EXPECT_LT(gPreIntroCounter, 15);
        });
        user.wait(kIntroLong);
        look([] { EXPECT_TRUE(same(ItemBox(gTheDialog, 2), kFullPicture)); });
    });
    open([&] { reach(kScrolling); });
    open([&] {
        user.wait(kIntroLong);
        look([] {
            EXPECT_EQ(gScrollInProg, 0);
            EXPECT_EQ(gWhichScrollString, 1);
            EXPECT_EQ(gScrollDelta, kWindowWidth);
        });
    });
}

// A picture narrowed at one depth must not come back at the other.
TEST_F(AboutClick, DepthMayChangeInEveryState)
{
    for (State state : {kBeforeIntro, kShowing, kScrolling, kFallen}) {
        useDepth(8);
        open([&] {
            reach(state);
            for (int depth : {1, 32, 2, 8, 4}) {
                user.setDepth(depth);
                user.wait(kIntroLong);
                look([&, depth] {
                    int16_t shown = depth < 8 ? 1 : 2, other = depth < 8 ? 2 : 1;
                    EXPECT_FALSE(isHidden(shown)) << depth;
                    EXPECT_TRUE(isHidden(other)) << depth;
                    Rect picture = ItemBox(gTheDialog, shown);
                    EXPECT_EQ(EmptyRect(&picture), state == kFallen) << depth;
                    EXPECT_EQ(isHidden(shown + 2), state == kFallen);
                    EXPECT_TRUE(isHidden(other + 2));
                });
            }
        });
        EXPECT_FALSE(ended);
    }
    useDepth(8);
}

TEST_F(AboutClick, UpdateDuringTheScrollLeavesTheLineAlone)
{
    open([&] {
        reach(kScrolling);
        user.setDepth(32);
        look([&] { drawn.clear(); });
        user.wait(10);
        look([&] {
            EXPECT_FALSE(drawnWith("text ").empty());
            for (const std::string &line : drawnWith("text "))
                EXPECT_NE(line.find("face 3"), std::string::npos) << line;
        });
    });
    useDepth(8);
}

// --- The credits panel ------------------------------------------------------

class Credits : public About {
protected:
    void openPanel(const std::function<void()> &steps)
    {
        open(
            [&] {
                user.press(kPictureArea, optionKey);
                user.in(kPanel);
                steps();
            },
            true);
    }

    static int checked()
    {
        int16_t type;
        Handle item;
        Rect box;
        GetDItem(gTheDialog, kCheckBox, &type, &item, &box);
        return GetCtlValue(reinterpret_cast<ControlHandle>(item));
    }

    void configure(int depth, int32_t systemVersion, int32_t quickDraw)
    {
        configuration.systemVersion = systemVersion;
        configuration.quickDrawVersion = quickDraw;
        useDepth(depth);
    }
};

TEST_F(Credits, OpensInTheMiddleAfterTheBoxHasClosed)
{
    openPanel([&] { user.key("return"); });
    std::vector<std::string> order;
    for (const std::string &line : trace)
        if (line.starts_with("dialog "))
            order.push_back(line);
    EXPECT_EQ(order, (std::vector<std::string>{"dialog 16200 shown at 195,108 250x156", "dialog 16200 hidden",
                                               "dialog 16200 closed", "dialog 17000 shown at 195,170 250x140",
                                               "dialog 17000 hidden", "dialog 17000 closed"}));
}

TEST_F(Credits, AnswersOne)
{
    makeRecords();
    user.in(kAbout);
    user.press(kPictureArea, optionKey);
    user.in(kPanel);
    user.key("enter");
    EXPECT_TRUE(guarded([] { EXPECT_EQ(HandleAboutDialog(), 1); }));
    user.in(kAbout);
    user.key("enter");
    EXPECT_TRUE(guarded([] { EXPECT_EQ(HandleAboutDialog(), 1); }));
}

TEST_F(Credits, ShowsThePictureForTheDepth)
{
    for (int depth : {1, 2, 4, 8, 32}) {
        useDepth(depth);
        openPanel([&] {
            user.wait(3);
            look([&] {
                EXPECT_EQ(isHidden(2), depth >= 8) << depth;
                EXPECT_EQ(isHidden(3), depth < 8) << depth;
            });
            user.setDepth(depth < 8 ? 32 : 1);
            user.wait(3);
            look([&] { EXPECT_EQ(isHidden(2), depth < 8) << "changed from " << depth; });
            user.key("return");
        });
    }
    useDepth(8);
}

TEST_F(Credits, DrawsItsTwoLinesCentred)
{
    Rect area{};
    int first = 0, second = 0;
    openPanel([&] {
        user.wait(3);
        look([&] {
            area = ItemBox(gTheDialog, 1);
            TextFont(3);
            TextSize(10);
            TextFace(bold);
            first = StringWidth(P(text(16201, 4)));
            TextSize(9);
            TextFace(normal);
            second = StringWidth(P(text(16201, 5)));
            TextFont(0);
            TextSize(0);
        });
        user.key("return");
    });
    auto place = [&](int width, int baseline) {
        return std::to_string((area.left + area.right - width) / 2) + "," + std::to_string(area.top + baseline);
    };
    std::vector<std::string> texts = drawnWith("text ");
    std::string one = place(first, 10) + " \"" + text(16201, 4) + "\" font 3 size 10 face 1 color 33";
    std::string two = place(second, 23) + " \"" + text(16201, 5) + "\" font 3 size 9 face 0 color 33";
    EXPECT_NE(std::find(texts.begin(), texts.end(), one), texts.end()) << one;
    EXPECT_NE(std::find(texts.begin(), texts.end(), two), texts.end()) << two;
}

TEST_F(Credits, CheckBoxIsShownOnlyWhereColourCanBe)
{
    struct Case {
        int depth;
        int32_t system, quickDraw;
        bool shown;
    };
    for (const Case &each : {Case{8, 0x0755, 0x230, true}, Case{2, 0x0700, 0x100, true}, Case{1, 0x0755, 0x230, false},
                             Case{8, 0x06FF, 0x230, false}, Case{8, 0x0755, 0x0FF, false}}) {
        configure(each.depth, each.system, each.quickDraw);
        openPanel([&] {
            user.wait(2);
            look([&] { EXPECT_EQ(isHidden(kCheckBox), !each.shown) << each.depth << " " << each.system; });
            user.key("enter");
        });
    }
    configure(8, 0x0755, 0x230);
}

TEST_F(Credits, ClickOnTheCheckBoxInvertsItAndThePanelStays)
{
    openPanel([&] {
        look([] { EXPECT_EQ(checked(), gPrefsPtr->useColor); });
        for (int i = 0; i < 3; ++i) {
            user.press(kCheckBox);
            user.wait(2);
            look([i] {
                EXPECT_EQ(checked(), (i + 1) % 2);
                EXPECT_EQ(gPrefsPtr->useColor, (i + 1) % 2);
                EXPECT_EQ(gAboutDone, 0);
            });
        }
        user.key("return");
    });
}

TEST_F(Credits, AnyOtherClickClosesThePanel)
{
    for (int item : {1, 3})
        openPanel([&] {
            user.wait(3);
            user.press(item);
        });
    EXPECT_EQ(tracedTimes("dialog 17000 closed"), 2);
}

TEST_F(Credits, OtherKeysLeaveThePanelOpen)
{
    openPanel([&] {
        user.key("escape");
        user.key("x");
        user.wait(2);
        look([] { EXPECT_EQ(gAboutDone, 0); });
        user.key("return");
    });
}

TEST_F(Credits, ColourIsSavedAndUsedByTheNextSettingsDialog)
{
    std::vector<uint32_t> corners;
    for (int run = 0; run < 2; ++run) {
        openPanel([&] {
            look([run] { EXPECT_EQ(checked(), run); });
            user.press(kCheckBox);
            user.key("return");
        });
        user.in(kSettings);
        user.wait(3);
        look([&] {
            toolbox::Picture screen = toolbox::screenPicture(0);
            Point corner{4, 4};
            LocalToGlobal(&corner);
            corners.push_back(screen.pixels[static_cast<size_t>(corner.v * screen.width + corner.h)]);
        });
        user.key("escape");
        runCommand(kCommandSettings);
    }
    EXPECT_EQ(corners, (std::vector<uint32_t>{0xDDDDEE, 0xFFFFFF}));
}

// --- What may be missing ----------------------------------------------------

TEST_F(About, MissingDialogIsFatal)
{
    removeResource('DLOG', kAbout);
    dismiss();
    call(kSelectAbout);
    EXPECT_TRUE(ended);
    EXPECT_TRUE(traced(params(message(16129), "\r\rID = 80", " (dlog resource)")));
}

TEST_F(Credits, MissingPanelIsFatal)
{
    removeResource('DLOG', kPanel);
    user.in(kAbout);
    user.press(kPictureArea, optionKey);
    dismiss();
    call(kSelectAbout);
    EXPECT_TRUE(ended);
    EXPECT_TRUE(traced(params(message(16129), "\r\rID = 80", " (dlog resource)")));
}

TEST_F(About, EachMissingLineIsFatal)
{
    for (int missing : {2, 5, 3}) {
        std::string list("\0\5", 2);
        for (int index = 1; index <= 5; ++index)
            list += index == missing ? std::string(1, '\0') : std::string("\3abc");
        restartPlugin();
        replaceResource('STR#', 16200, list);
        user.forgetRest();
        user.wait(30);
        dismiss();
        trace.clear();
        call(kSelectAbout);
        EXPECT_TRUE(ended) << missing;
        EXPECT_TRUE(traced(params(message(16129), "\r\rID = 90", " (STR# resource)"))) << missing;
    }
}

TEST_F(About, MissingPicturesLeaveTheBoxEmptyButWorking)
{
    for (int16_t id : {16201, 16202, 16203, 16204})
        removeResource('PICT', id);
    open([&] {
        user.wait(kIntroLong);
        user.press(kPictureArea);
        look([] { EXPECT_EQ(gIconDone, 1); });
    });
}

// Whichever allocation fails: the call comes back with nothing left (call()
// looks), or the process ends.
TEST_F(About, AnyAllocationMayFail)
{
    for (bool onward : {false, true}) {
        for (int nth = 1;; ++nth) {
            restartPlugin();
            user.forgetRest();
            for (int i = 0; i < 6; ++i) {
                user.wait(i == 0 ? 30 : 1);
                user.key("return");
            }
            toolbox::faults::failAllocation(nth, onward);
            call(kSelectAbout);
            bool met = toolbox::faults::met();
            toolbox::faults::clear();
            if (!met)
                break;
            ASSERT_LT(nth, 3000);
        }
    }
    user.forgetRest();
}

// --- The pictures -----------------------------------------------------------

TEST_F(About, PicturesAreDrawnAsTheirSourcesAre)
{
    const std::pair<int16_t, const char *> pictures[] = {{16201, "about_black"}, {16202, "about_color"},
                                                         {16203, "loupe_black"}, {16204, "loupe_color"},
                                                         {17001, "dots_black"},  {17002, "dots_color"}};
    for (const auto &[id, name] : pictures) {
        toolbox::Picture source = toolbox::readPng(std::string(RIDERS_SOURCE_DIR "/resources/art/") + name + ".png");
        ASSERT_GT(source.width, 0) << name;
        Rect box = {100, 100, static_cast<int16_t>(100 + source.height), static_cast<int16_t>(100 + source.width)};
        SetPort(nullptr);
        DrawPicture(GetPicture(id), &box);
        toolbox::Picture screen = toolbox::screenPicture(0);
        int different = 0;
        for (int v = 0; v < source.height; ++v)
            for (int h = 0; h < source.width; ++h)
                different += screen.pixels[static_cast<size_t>((100 + v) * screen.width + 100 + h)] !=
                             source.pixels[static_cast<size_t>(v * source.width + h)];
        EXPECT_EQ(different, 0) << name;
    }
}

TEST_F(About, PicturesForFewColoursAreBlackAndWhite)
{
    for (const char *name : {"about_black", "loupe_black", "dots_black"})
        for (uint32_t pixel :
             toolbox::readPng(std::string(RIDERS_SOURCE_DIR "/resources/art/") + name + ".png").pixels)
            ASSERT_TRUE(pixel == 0 || pixel == 0xFFFFFF) << name;
}

}  // namespace
