// Controls: what a press on them does, and what they look like.
#include <algorithm>

#include "support/dialog_test.h"
#include "toolbox/host/flash_button.h"
#include "toolbox/host/picture.h"
#include "toolbox/resources.h"

using Kind = toolbox::Input::Kind;

namespace {

class Controls : public DialogTest {
protected:
    void SetUp() override
    {
        DialogTest::SetUp();
        Rect bounds{100, 100, 300, 300};
        window = NewWindow(nullptr, &bounds, P(""), true, plainDBox, reinterpret_cast<WindowPtr>(-1), false, 0);
        SetPort(window);
    }

    ControlHandle make(int procID, int left, int top, int right, int bottom, int max = 1)
    {
        Rect r;
        SetRect(&r, left, top, right, bottom);
        return NewControl(window, &r, P("Title"), true, 0, 0, max, procID, 0);
    }

    // Presses at the first point (local), moves to the second, releases.
    int16_t drag(ControlHandle control, Point from, Point to, ProcPtr action = nullptr)
    {
        mouse(Kind::mouseDown, from.h + 100, from.v + 100);
        EventRecord event;
        WaitNextEvent(1 << mouseDown, &event, 1);
        mouse(Kind::mouseMoved, to.h + 100, to.v + 100);
        mouse(Kind::mouseUp, to.h + 100, to.v + 100);
        return TrackControl(control, from, action);
    }

    uint32_t pixel(int h, int v)
    {
        toolbox::Picture picture = toolbox::displayPicture(0);
        return picture.pixels[static_cast<size_t>(v + 100) * picture.width + h + 100];
    }

    WindowPtr window = nullptr;
};

}  // namespace

TEST_F(Controls, AButtonReturnsItsPartWhenReleasedInside)
{
    ControlHandle button = make(pushButProc, 10, 10, 90, 30);
    EXPECT_EQ(drag(button, {20, 20}, {20, 40}), inButton);
    EXPECT_TRUE(traced("press \"Title\""));
    EXPECT_EQ((**button).contrlHilite, 0);
}

TEST_F(Controls, AButtonReturnsNothingWhenReleasedOutside)
{
    ControlHandle button = make(pushButProc, 10, 10, 90, 30);
    EXPECT_EQ(drag(button, {20, 20}, {20, 140}), 0);
    EXPECT_FALSE(traced("press"));
    EXPECT_EQ((**button).contrlHilite, 0);
}

TEST_F(Controls, TheReleaseIsNotLeftForLater)
{
    drag(make(pushButProc, 10, 10, 90, 30), {20, 20}, {20, 40});
    EventRecord event;
    EXPECT_FALSE(WaitNextEvent(1 << mouseUp, &event, 1));
}

TEST_F(Controls, AButtonHilitedByCodeIsTracedAndInverted)
{
    ControlHandle button = make(pushButProc, 10, 10, 90, 30);
    uint32_t plain = pixel(15, 20);
    HiliteControl(button, 10);
    EXPECT_NE(pixel(15, 20), plain);
    HiliteControl(button, 0);
    EXPECT_EQ(pixel(15, 20), plain);
    EXPECT_EQ(tracedTimes("flash \"Title\""), 1);
}

TEST_F(Controls, ADimmedOrHiddenControlIsDead)
{
    ControlHandle button = make(pushButProc, 10, 10, 90, 30);
    Point inside{20, 20};
    ControlHandle found;
    EXPECT_EQ(FindControl(inside, window, &found), inButton);
    EXPECT_EQ(found, button);
    HiliteControl(button, 255);
    EXPECT_EQ(FindControl(inside, window, &found), 0);
    HiliteControl(button, 0);
    HideControl(button);
    EXPECT_EQ(TestControl(button, inside), 0);
    ShowControl(button);
    EXPECT_EQ(TestControl(button, inside), inButton);
}

TEST_F(Controls, ValuesStayBetweenTheirLimits)
{
    ControlHandle box = make(checkBoxProc, 10, 10, 90, 30);
    SetCtlValue(box, 7);
    EXPECT_EQ(GetCtlValue(box), 1);
    SetCtlValue(box, -7);
    EXPECT_EQ(GetCtlValue(box), 0);
    EXPECT_EQ(drag(box, {20, 20}, {20, 20}), inCheckBox);
    EXPECT_EQ(GetCtlValue(box), 0) << "its owner sets the value";
}

TEST_F(Controls, ASmallerMaximumCutsTheValue)
{
    ControlHandle bar = make(scrollBarProc, 100, 10, 116, 110, 50);
    SetCtlValue(bar, 40);
    SetCtlMax(bar, 30);
    EXPECT_EQ(GetCtlValue(bar), 30);
    SetCtlMax(bar, 60);
    EXPECT_EQ(GetCtlValue(bar), 30);
    SetCtlValue(bar, 60);
    EXPECT_EQ(GetCtlValue(bar), 60);
}

TEST_F(Controls, ANewTitleIsKeptAndDrawn)
{
    ControlHandle button = make(pushButProc, 10, 10, 90, 30);
    toolbox::Picture shown = toolbox::displayPicture(0);
    SetCTitle(button, P("Other"));
    Str255 title;
    GetCTitle(button, title);
    EXPECT_EQ(plain(title), "Other");
    EXPECT_NE(toolbox::displayPicture(0).pixels, shown.pixels);
}

TEST_F(Controls, AllOfAWindowAreDrawnButTheHidden)
{
    make(pushButProc, 10, 10, 90, 30);
    ControlHandle hidden = make(pushButProc, 10, 50, 90, 70);
    make(checkBoxProc, 10, 90, 90, 110);
    HideControl(hidden);
    toolbox::Picture shown = toolbox::displayPicture(0);
    EraseRect(&window->portRect);
    ASSERT_NE(toolbox::displayPicture(0).pixels, shown.pixels);
    DrawControls(window);
    EXPECT_EQ(toolbox::displayPicture(0).pixels, shown.pixels);
}

TEST_F(Controls, OneInTheMiddleCanBeDisposedOfAndThenAll)
{
    ControlHandle first = make(pushButProc, 10, 10, 90, 30);
    ControlHandle middle = make(pushButProc, 10, 50, 90, 70);
    ControlHandle last = make(pushButProc, 10, 90, 90, 110);
    DisposeControl(middle);
    ControlHandle found;
    EXPECT_EQ(FindControl({60, 50}, window, &found), 0);
    FindControl({20, 50}, window, &found);
    EXPECT_EQ(found, first);
    FindControl({100, 50}, window, &found);
    EXPECT_EQ(found, last);
    KillControls(window);
    FindControl({20, 50}, window, &found);
    EXPECT_EQ(found, nullptr);
    DisposeWindow(window);
    EXPECT_EQ(toolbox::leftBehind(), before) << toolbox::leftBehind().text();
}

TEST_F(Controls, TheArrowsAndPagesOfAScrollBarCallTheActionWhileHeld)
{
    static ControlHandle bar;
    static std::vector<int> parts;
    bar = make(scrollBarProc, 100, 10, 116, 110, 10);
    parts.clear();
    auto action = +[](ControlHandle control, int16_t part) {
        parts.push_back(part);
        SetCtlValue(control, GetCtlValue(control) + 1);
    };
    EXPECT_EQ(drag(bar, {105, 105}, {105, 105}, reinterpret_cast<ProcPtr>(action)), inDownButton);
    ASSERT_FALSE(parts.empty());
    EXPECT_EQ(parts.front(), inDownButton);
    EXPECT_GT(GetCtlValue(bar), 0);
    parts.clear();
    drag(bar, {90, 105}, {90, 105}, reinterpret_cast<ProcPtr>(action));
    ASSERT_FALSE(parts.empty());
    EXPECT_EQ(parts.front(), inPageDown);
    EventRecord event;
    EXPECT_FALSE(WaitNextEvent(1 << mouseUp, &event, 1));
}

TEST_F(Controls, TheThumbOfAScrollBarSetsTheValue)
{
    ControlHandle bar = make(scrollBarProc, 100, 10, 116, 110, 10);
    EXPECT_EQ(drag(bar, {30, 105}, {90, 105}), inThumb);
    EXPECT_EQ(GetCtlValue(bar), 10);
    EXPECT_EQ(drag(bar, {80, 105}, {80, 290}), 0) << "far from the bar the thumb springs back";
    EXPECT_EQ(GetCtlValue(bar), 10);
}

TEST_F(Controls, AScrollBarMayLieOnItsSide)
{
    static std::vector<int> parts;
    ControlHandle bar = make(scrollBarProc, 10, 100, 110, 116, 10);
    auto action = +[](ControlHandle, int16_t part) { parts.push_back(part); };
    for (auto [h, part] : {std::pair{15, inUpButton}, std::pair{105, inDownButton}, std::pair{80, inPageDown}}) {
        parts.clear();
        const Point at{105, static_cast<int16_t>(h)};
        EXPECT_EQ(drag(bar, at, at, reinterpret_cast<ProcPtr>(action)), part);
        ASSERT_FALSE(parts.empty());
        EXPECT_EQ(parts.front(), part);
    }
    EXPECT_EQ(drag(bar, {105, 30}, {105, 90}), inThumb);
    EXPECT_EQ(GetCtlValue(bar), 10);
    const Point before{105, 40};
    EXPECT_EQ(TestControl(bar, before), inPageUp);
}

TEST_F(Controls, AScrollBarWithNothingToScrollHasNoThumbAndNoPages)
{
    ControlHandle bar = make(scrollBarProc, 100, 10, 116, 110, 0);
    EXPECT_EQ(TestControl(bar, {60, 105}), 0);
    EXPECT_EQ(TestControl(bar, {15, 105}), inUpButton);
    HiliteControl(bar, 255);
    EXPECT_EQ(pixel(105, 20), 0xFFFFFFu) << "a dimmed one is empty";
}

TEST_F(Controls, AScrollBarHasAFrameAndAGreyTrackAroundItsThumb)
{
    auto blackIn = [this](int left, int top, int right, int bottom) {
        int black = 0;
        for (int v = top; v < bottom; ++v)
            for (int h = left; h < right; ++h)
                black += pixel(h, v) == 0;
        return black;
    };
    ControlHandle bar = make(scrollBarProc, 100, 10, 116, 110, 10);
    EXPECT_EQ(blackIn(100, 10, 101, 110), 100) << "the frame's left side";
    EXPECT_EQ(blackIn(115, 10, 116, 110), 100);
    EXPECT_EQ(blackIn(100, 10, 116, 11), 16);
    const int inTrack = blackIn(101, 50, 115, 90);
    EXPECT_GT(inTrack, 14 * 40 / 8);
    EXPECT_LT(inTrack, 14 * 40 / 2) << "light grey";
    EXPECT_EQ(blackIn(103, 29, 113, 38), 0) << "within the thumb";
    EXPECT_GT(blackIn(101, 12, 115, 24), 10) << "an arrow";
    SetCtlMax(bar, 0);
    EXPECT_EQ(blackIn(101, 30, 115, 90), 0) << "nothing to scroll";
    EXPECT_GT(blackIn(101, 12, 115, 24), 10);
}

TEST_F(Controls, ARadioButtonIsFilledWhenItIsOn)
{
    ControlHandle radio = make(radioButProc, 10, 10, 90, 30);
    const int middleOfMark = 10 + 2 + 6;
    EXPECT_EQ(pixel(middleOfMark, 20), 0xFFFFFFu);
    SetCtlValue(radio, 1);
    EXPECT_EQ(pixel(middleOfMark, 20), 0u);
    EXPECT_EQ(drag(radio, {20, 20}, {20, 20}), inCheckBox);
}

TEST_F(Controls, ADimmedCheckBoxHasFewerBlackPixelsInTheSamePlaces)
{
    ControlHandle box = make(checkBoxProc, 10, 10, 90, 30);
    auto black = [] {
        const toolbox::Picture picture = toolbox::displayPicture(0);
        std::vector<size_t> places;
        for (size_t i = 0; i < picture.pixels.size(); ++i)
            if (picture.pixels[i] == 0)
                places.push_back(i);
        return places;
    };
    const std::vector<size_t> plain = black();
    HiliteControl(box, 255);
    const std::vector<size_t> dimmed = black();
    EXPECT_GT(dimmed.size(), 0u);
    EXPECT_LT(dimmed.size(), plain.size());
    EXPECT_TRUE(std::includes(plain.begin(), plain.end(), dimmed.begin(), dimmed.end()));
}

TEST_F(Controls, AColourTableIsCopied)
{
    ControlHandle button = make(pushButProc, 10, 10, 90, 30);
    ResourceBytes table;
    table.longWord(0).word(0).word(0).word(1).word(0xFC00).word(0xF37D).word(0x052F).add('cctb', 7);
    Handle resource = GetResource('cctb', 7);
    SetCtlColor(button, resource);
    ReleaseResource(resource);
    Draw1Control(button);
    EXPECT_EQ(pixel(15, 20), 0xFFFF00u);
    DisposeControl(button);
    DisposeWindow(window);
    EXPECT_EQ(toolbox::leftBehind(), before) << toolbox::leftBehind().text();
}

TEST_F(Controls, MovingAndSizingEraseTheOldPixels)
{
    ControlHandle button = make(pushButProc, 10, 10, 90, 30);
    EXPECT_EQ(pixel(50, 10), 0u);
    MoveControl(button, 10, 60);
    EXPECT_EQ(pixel(50, 10), 0xFFFFFFu);
    EXPECT_EQ(pixel(50, 60), 0u);
    SizeControl(button, 40, 20);
    EXPECT_EQ((**button).contrlRect.right, 50);
    EXPECT_EQ(pixel(70, 60), 0xFFFFFFu);
}

TEST_F(Controls, AFlashShowsTheButtonPressedForEightTicks)
{
    ControlHandle button = make(pushButProc, 10, 10, 80, 30);
    const uint32_t before = TickCount();
    toolbox::flashButton(button);
    EXPECT_EQ(TickCount() - before, 8u);
    EXPECT_EQ((**button).contrlHilite, 0);
    EXPECT_EQ(tracedTimes("flash \"Title\""), 1);
}
