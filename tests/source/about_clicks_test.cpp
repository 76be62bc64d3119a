// Clicks, keys and display changes at every moment.
#include "source/about_box.h"
#include "support/sanitized.h"
#include "toolbox/host/quit.h"
#include "toolbox/windows.h"

namespace about {
namespace {

enum Outcome { kCloses, kOpensPanel, kFalls, kScrolls };

class AboutClick : public About {
protected:
    // Many sessions, in which no pixels are checked.
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
        for (uint32_t ticks = 0; ticks < 90; ticks += ticks < 24 && !triesLess() ? 1 : 13)
            open(
                [&] {
                    user.wait(ticks);
                    user.key(key);
                },
                true);
        for (uint32_t ticks = 0; ticks < 700; ticks += triesLess() ? 175 : 35)
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

// The display's size and depth change at each frame in turn, from the growing of
// the picture to the end of the fall and of the scroll.
class AboutDisturbed : public About {
protected:
    // One opening with all its phases; at the given frame (from 1; 0: never) the
    // displays change. Returns how many frames there were.
    int openDisturbedAt(int disturbed, const std::vector<toolbox::Display> &displays, bool falls)
    {
        machine.setDisplays({{{0, 0, 480, 640}, 8}});
        restartPlugin();
        int frames = 0;
        machine.setWatcher([&](int, const toolbox::Picture &) {
            if (++frames == disturbed)
                machine.setDisplays(displays);
        });
        open([&] {
            user.wait(kIntroLong);
            user.press(kPictureArea, falls ? 0 : controlKey);
            user.wait(40);
            look([&] {
                EXPECT_EQ(gIconDone, falls) << disturbed;
                EXPECT_EQ(gScrollInProg, !falls) << disturbed;
            });
        });
        machine.setWatcher({});
        EXPECT_FALSE(ended) << disturbed;
        return frames;
    }

    void disturbEveryFrame(const std::vector<toolbox::Display> &displays, bool falls)
    {
        const int all = openDisturbedAt(0, displays, falls);
        ASSERT_GT(all, 30);
        for (int frame = 1; frame <= all; frame += triesLess() ? 10 : 3)
            openDisturbedAt(frame, displays, falls);
    }
};

// The window is closed at each frame in turn; the steps that the person has left are
// not taken.
TEST_F(AboutDisturbed, ClosedWindowClosesTheBoxAtAnyFrame)
{
    for (bool falls : {true, false})
        for (int closed = 1; closed <= 60; closed += triesLess() ? 13 : 4) {
            restartPlugin();
            int frames = 0;
            machine.setWatcher([&](int, const toolbox::Picture &) {
                if (++frames == closed)
                    machine.push({.kind = toolbox::Input::Kind::quit});
            });
            user.forgetRest();
            user.in(kAbout);
            user.wait(kIntroLong);
            user.press(kPictureArea, falls ? 0 : controlKey);
            user.wait(400);
            EXPECT_EQ(call(kSelectAbout), 0);
            machine.setWatcher({});
            EXPECT_GE(frames, closed);
            EXPECT_TRUE(toolbox::quitAsked()) << closed;
            EXPECT_EQ(FrontWindow(), nullptr) << closed;
            EXPECT_FALSE(ended) << closed;
        }
    user.forgetRest();
}

TEST_F(AboutDisturbed, FallGoesOnWhenTheDisplayShrinksAtAnyFrame)
{
    disturbEveryFrame({{{0, 0, 342, 512}, 1}}, true);
}

TEST_F(AboutDisturbed, ScrollGoesOnWhenTheDisplayGrowsAtAnyFrame)
{
    disturbEveryFrame({{{0, 0, 768, 1024}, 32}}, false);
}

}  // namespace
}  // namespace about
