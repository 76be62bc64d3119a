// Windows: order, visibility, updates, activation, colours.
#include "support/dialog_test.h"
#include "toolbox/events.h"
#include "toolbox/host/picture.h"
#include "toolbox/resources.h"
#include "toolbox/windows.h"

namespace {

const WindowPtr foremost = reinterpret_cast<WindowPtr>(-1);

class Windows : public DialogTest {
protected:
    WindowPtr make(int left, int top, int right, int bottom, int procID = plainDBox, WindowPtr behind = foremost,
                   bool visible = true)
    {
        Rect bounds;
        SetRect(&bounds, left, top, right, bottom);
        return NewWindow(nullptr, &bounds, P("Window"), visible, procID, behind, false, 0);
    }

    static bool sees(WindowPtr window, int h, int v)
    {
        return PtInRgn(Point{static_cast<int16_t>(v), static_cast<int16_t>(h)}, window->visRgn);
    }

    // The windows that get an update, in order.
    std::vector<WindowPtr> update()
    {
        std::vector<WindowPtr> asked;
        EventRecord event;
        while (WaitNextEvent(1 << updateEvt, &event, 1)) {
            asked.push_back(reinterpret_cast<WindowPtr>(event.message));
            BeginUpdate(asked.back());
            EndUpdate(asked.back());
        }
        return asked;
    }

    uint32_t pixel(int h, int v)
    {
        toolbox::Picture picture = toolbox::displayPicture(0);
        return picture.pixels[static_cast<size_t>(v) * picture.width + h];
    }
};

constexpr uint32_t plainWhite = 0xFFFFFF;

}  // namespace

TEST_F(Windows, TheCurrentPortStaysWhenAWindowIsMade)
{
    GrafPtr before, after;
    GetPort(&before);
    make(100, 100, 200, 200);
    GetPort(&after);
    EXPECT_EQ(after, before);
}

TEST_F(Windows, ClosingFreesEverything)
{
    WindowPtr allocated = make(100, 100, 200, 200, movableDBoxProc);
    WindowRecord storage;
    Rect bounds{50, 50, 90, 90};
    WindowPtr given = NewWindow(&storage, &bounds, P("Mine"), true, documentProc, nullptr, true, 0);
    ASSERT_EQ(given, &storage.port);
    NewControl(allocated, &bounds, P("Button"), true, 0, 0, 1, pushButProc, 0);
    EXPECT_EQ(toolbox::leftBehind().openWindows, 2);
    SetPort(given);
    CloseWindow(given);
    DisposeWindow(allocated);
    EXPECT_EQ(toolbox::leftBehind(), before) << toolbox::leftBehind().text();
    GrafPtr now;
    GetPort(&now);
    EXPECT_NE(now, given);
}

TEST_F(Windows, DocumentsAndKindsThatAreNotKnownHaveATitleBarAndALittleShadow)
{
    for (int16_t kind : {int16_t{documentProc}, int16_t{99}}) {
        WindowPtr window = make(100, 100, 200, 200, kind);
        const Rect around = (**reinterpret_cast<WindowPeek>(window)->strucRgn).rgnBBox;
        const Rect expected{81, 99, 202, 202};
        EXPECT_TRUE(EqualRect(&around, &expected))
            << kind << ": " << around.top << ' ' << around.left << ' ' << around.bottom << ' ' << around.right;
    }
}

TEST_F(Windows, TheCloseBoxIsASquareOfElevenPixelsInTheTitleBar)
{
    Rect bounds{100, 100, 200, 200}, box{999, 999, 0, 0};
    WindowPtr window = NewWindow(nullptr, &bounds, P("T"), true, documentProc, nullptr, true, 0), found;
    SelectWindow(window);
    int pixels = 0;
    for (int16_t v = 75; v < 105; ++v)
        for (int16_t h = 90; h < 210; ++h)
            if (FindWindow({v, h}, &found) == inGoAway) {
                box = {std::min(box.top, v), std::min(box.left, h), std::max(box.bottom, v),
                       std::max(box.right, h)};
                ++pixels;
            }
    EXPECT_EQ(pixels, 11 * 11);
    EXPECT_EQ(box.right - box.left, 10);
    EXPECT_GT(box.top, 81);
    EXPECT_LT(box.bottom, 100);
    EXPECT_LT(box.right, 150) << "at the left";
}

TEST_F(Windows, TheFrontWindowIsTheFirstVisibleOne)
{
    WindowPtr back = make(100, 100, 200, 200);
    WindowPtr hidden = make(100, 100, 200, 200, plainDBox, foremost, false);
    WindowPtr last = make(300, 300, 400, 400, plainDBox, nullptr);
    EXPECT_EQ(FrontWindow(), back);
    ShowWindow(hidden);
    EXPECT_EQ(FrontWindow(), hidden);
    EXPECT_EQ(reinterpret_cast<WindowPeek>(back)->nextWindow, reinterpret_cast<WindowPeek>(last));
    HideWindow(hidden);
    EXPECT_EQ(FrontWindow(), back);
    SelectWindow(last);
    EXPECT_EQ(FrontWindow(), last);
}

TEST_F(Windows, AWindowSeesWhatNoWindowInFrontCovers)
{
    WindowPtr back = make(100, 100, 200, 200);
    WindowPtr front = make(150, 150, 250, 250);
    EXPECT_TRUE(sees(back, 10, 10));
    EXPECT_FALSE(sees(back, 60, 60));
    EXPECT_TRUE(sees(front, 60, 60));
    EXPECT_FALSE(sees(back, 49, 60)) << "the frame of the front window covers too";
    MoveWindow(front, 300, 300, false);
    EXPECT_TRUE(sees(back, 60, 60));
    MoveWindow(back, 310, 310, true);
    EXPECT_TRUE(sees(back, 0, 0));
    EXPECT_FALSE(sees(front, 20, 20));
}

TEST_F(Windows, WhatIsUncoveredIsErasedAndUpdated)
{
    WindowPtr back = make(100, 100, 200, 200);
    WindowPtr front = make(150, 150, 250, 250);
    update();
    SetPort(front);
    PaintRect(&front->portRect);
    EXPECT_EQ(pixel(160, 160), 0u);
    HideWindow(front);
    EXPECT_EQ(pixel(160, 160), plainWhite);
    EXPECT_EQ(update(), std::vector<WindowPtr>{back});
    EXPECT_EQ(update(), std::vector<WindowPtr>{});
}

TEST_F(Windows, UpdatesComeFrontToBack)
{
    WindowPtr back = make(100, 100, 200, 200);
    WindowPtr front = make(150, 150, 250, 250);
    EXPECT_EQ(update(), (std::vector<WindowPtr>{front, back}));
    SetPort(back);
    Rect covered{60, 60, 90, 90};
    InvalRect(&covered);
    EXPECT_EQ(update(), std::vector<WindowPtr>{}) << "what is covered needs no update";
    Rect open{0, 0, 10, 10};
    InvalRect(&open);
    ValidRect(&open);
    EXPECT_EQ(update(), std::vector<WindowPtr>{});
    InvalRect(&open);
    EXPECT_EQ(update(), std::vector<WindowPtr>{back});
}

TEST_F(Windows, AnUpdateIsClippedToWhatNeedsIt)
{
    WindowPtr window = make(100, 100, 200, 200);
    update();
    SetPort(window);
    Rect part{10, 10, 20, 20};
    InvalRect(&part);
    BeginUpdate(window);
    EXPECT_TRUE(sees(window, 15, 15));
    EXPECT_FALSE(sees(window, 30, 30));
    EndUpdate(window);
    EXPECT_TRUE(sees(window, 30, 30));
}

TEST_F(Windows, ActivationFollowsTheFrontWindow)
{
    WindowPtr first = make(100, 100, 200, 200);
    WindowPtr second = make(150, 150, 250, 250);
    std::vector<std::pair<WindowPtr, bool>> seen;
    EventRecord event;
    while (WaitNextEvent(1 << activateEvt, &event, 1))
        seen.emplace_back(reinterpret_cast<WindowPtr>(event.message), (event.modifiers & activeFlag) != 0);
    EXPECT_EQ(seen, (std::vector<std::pair<WindowPtr, bool>>{{first, true}, {first, false}, {second, true}}));
    SelectWindow(first);
    DisposeWindow(second);
    WaitNextEvent(1 << activateEvt, &event, 1);
    EXPECT_EQ(reinterpret_cast<WindowPtr>(event.message), first) << "no event for a window that is gone";
}

TEST_F(Windows, APointBelongsToContentFrameOrNoWindow)
{
    WindowPtr movable = make(100, 100, 200, 200, movableDBoxProc);
    WindowPtr dialog = make(300, 100, 400, 200, dBoxProc);
    WindowPtr found;
    EXPECT_EQ(FindWindow(Point{150, 150}, &found), inContent);
    EXPECT_EQ(found, movable);
    EXPECT_EQ(FindWindow(Point{85, 150}, &found), inDrag);
    EXPECT_EQ(found, movable);
    EXPECT_EQ(FindWindow(Point{95, 350}, &found), inDesk);
    EXPECT_EQ(found, dialog);
    EXPECT_EQ(FindWindow(Point{5, 300}, &found), inMenuBar);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(FindWindow(Point{400, 300}, &found), inDesk);
    EXPECT_EQ(found, nullptr);
}

TEST_F(Windows, MovingAnInvisibleWindowMovesItsCoordinates)
{
    WindowPtr window = make(0, 30, 100, 130, dBoxProc, foremost, false);
    MoveWindow(window, 250, 160, false);
    SetPort(window);
    Point corner{0, 0};
    LocalToGlobal(&corner);
    EXPECT_EQ(corner.h, 250);
    EXPECT_EQ(corner.v, 160);
    ShowWindow(window);
    EXPECT_EQ(pixel(300, 200), plainWhite);
    EXPECT_TRUE(sees(window, 0, 0));
}

TEST_F(Windows, SizingUpdatesWhatIsNew)
{
    WindowPtr window = make(100, 100, 200, 200);
    update();
    SizeWindow(window, 150, 100, true);
    BeginUpdate(window);
    EXPECT_TRUE(sees(window, 120, 50));
    EXPECT_FALSE(sees(window, 50, 50));
    EndUpdate(window);
    EXPECT_EQ(window->portRect.right, 150);
}

TEST_F(Windows, TheFrameOfADialogHasTwoLines)
{
    make(100, 100, 200, 200, dBoxProc);
    EXPECT_EQ(pixel(92, 150), 0u);
    EXPECT_EQ(pixel(93, 150), plainWhite);
    EXPECT_EQ(pixel(95, 150), 0u);
    EXPECT_EQ(pixel(96, 150), 0u);
    EXPECT_EQ(pixel(97, 150), plainWhite);
    EXPECT_EQ(pixel(207, 150), 0u);
}

TEST_F(Windows, AColourTableGivesTheContentItsColour)
{
    ResourceBytes table;
    table.longWord(0).word(0).word(0).word(0).word(0xFC00).word(0xF37D).word(0x052F).add('wctb', 7);
    WindowPtr window = make(100, 100, 200, 200, plainDBox, foremost, false);
    Handle resource = GetResource('wctb', 7);
    SetWinColor(window, resource);
    ReleaseResource(resource);
    ShowWindow(window);
    EXPECT_EQ(pixel(150, 150), 0xFFFF00u);
    machine.setDisplays({{{0, 0, 480, 640}, 1}});
    update();
    EXPECT_EQ(pixel(150, 150), plainWhite) << "no colours with one bit per pixel";
    DisposeWindow(window);
    EXPECT_EQ(toolbox::leftBehind(), before) << toolbox::leftBehind().text();
}

TEST_F(Windows, AChangedDisplayIsRepainted)
{
    WindowPtr window = make(100, 100, 200, 200);
    update();
    machine.setDisplays({{{0, 0, 480, 640}, 4}});
    EXPECT_EQ(update(), std::vector<WindowPtr>{window});
}

TEST_F(Windows, ANewWindowWithoutMemoryIsNilAndLeavesNothing)
{
    for (int nth = 1;; ++nth) {
        toolbox::faults::failAllocation(nth);
        WindowPtr window = make(100, 100, 200, 200, plainDBox, foremost, false);
        bool met = toolbox::faults::met();
        toolbox::faults::clear();
        if (!met) {
            EXPECT_NE(window, nullptr);
            break;
        }
        EXPECT_EQ(window, nullptr) << nth;
        EXPECT_EQ(toolbox::leftBehind(), before) << nth << ": " << toolbox::leftBehind().text();
    }
}

TEST_F(Windows, TheReferenceValueHoldsAPointer)
{
    WindowPtr window = make(100, 100, 200, 200);
    SetWRefCon(window, reinterpret_cast<intptr_t>(this));
    EXPECT_EQ(GetWRefCon(window), reinterpret_cast<intptr_t>(this));
}

TEST_F(Windows, AColourOutsideTheEightIsShownExactly)
{
    machine.setDisplays({{{0, 0, 480, 640}, 32}});
    update();
    ResourceBytes table;
    table.longWord(0).word(0).word(0).word(0).word(0xDDDD).word(0xDDDD).word(0xEEEE).add('dctb', 8);
    WindowPtr window = make(100, 100, 200, 200, dBoxProc);
    SetWinColor(window, GetResource('dctb', 8));
    EXPECT_EQ(pixel(150, 150), 0xDDDDEEu);
    EXPECT_EQ(pixel(98, 150), 0xDDDDEEu) << "up to the frame";
    SetPort(window);
    Rect all = window->portRect;
    PaintRect(&all);
    EraseRect(&all);
    EXPECT_EQ(pixel(150, 150), 0xDDDDEEu);
    machine.setDisplays({{{0, 0, 480, 640}, 1}});
    update();
    EraseRect(&all);
    EXPECT_EQ(pixel(150, 150), plainWhite);
}
