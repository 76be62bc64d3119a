// The popup and the panel's frame as they stand on the screen, and the popup
// under the mouse.
#include "support/plugin_test.h"

#include "ktColor.h"
#include "popup.h"
#include "toolbox/host/picture.h"
#include "toolbox/memory.h"
#include "toolbox/windows.h"

namespace {

using toolbox::Input;
using Kind = Input::Kind;

constexpr int left = 100, top = 100;
const Rect kBox = {20, 30, 40, 130};

class PopupPixels : public PluginTest {
protected:
    void SetUp() override
    {
        PluginTest::SetUp();
        makeRecords();
        openWindow();
    }
    void TearDown() override
    {
        if (popup_) {
            DisposePopup(popup_, false);
            DisposeHandle(popup_);
        }
        DisposeWindow(window_);
        PluginTest::TearDown();
    }

    void openWindow()
    {
        Rect bounds{top, left, 300, 400};
        window_ = NewWindow(nullptr, &bounds, P(""), true, plainDBox, reinterpret_cast<WindowPtr>(-1), false, 0);
        SetPort(window_);
    }
    PopupInfo &make(const Rect &box, const std::string &title = "", int16_t item = 5)
    {
        popup_ = NewPopup();
        SetupPopup(popup_, box, P(title), nullptr, kAnnoFontMenu, item);
        return record();
    }
    PopupInfo &record() { return *PopupRecord(popup_); }

    // The window's pixels in a local rectangle, a line a row: # black, . white,
    // b blue, ? anything else.
    static std::vector<std::string> pixels(const Rect &local)
    {
        toolbox::Picture screen = toolbox::screenPicture(0);
        std::vector<std::string> rows;
        for (int v = local.top; v < local.bottom; ++v) {
            rows.emplace_back();
            for (int h = local.left; h < local.right; ++h)
                rows.back() += letter(screen.pixels[static_cast<size_t>((v + top) * screen.width + h + left)]);
        }
        return rows;
    }
    static char letter(uint32_t pixel)
    {
        switch (pixel) {
        case 0x000000: return '#';
        case 0xFFFFFF: return '.';
        case 0x0000D4:
        case 0x0000CC: return 'b';   // as a screen of 8 bits has it
        }
        return '?';
    }

    // Presses where the popup's menu will come up, and leaves the mouse's way to
    // be taken while it is tracked.
    void pressAndGo(Point local, Point to)
    {
        auto global = [](Point p) { return Point{static_cast<int16_t>(p.v + top), static_cast<int16_t>(p.h + left)}; };
        machine.push({.kind = Kind::mouseDown, .where = global(local)});
        EventRecord event;
        WaitNextEvent(1 << mouseDown, &event, 1);
        // Away and back: it is a drag, not the click that leaves a menu open.
        machine.push({.kind = Kind::mouseMoved, .where = global({local.v, static_cast<int16_t>(local.h + 20)})});
        machine.push({.kind = Kind::mouseMoved, .where = global(to)});
        machine.push({.kind = Kind::mouseUp, .where = global(to)});
    }

    WindowPtr window_ = nullptr;
    Handle popup_ = nullptr;
};

TEST_F(PopupPixels, ShadowLiesOnePixelOutsideTheFrame)
{
    make(kBox);
    DrawPopup(popup_);
    // The bottom left corner: frame, then the shadow, which begins one pixel in.
    EXPECT_EQ(pixels({36, 28, 43, 36}), (std::vector<std::string>{"..#.....",   // 36
                                                                  "..#.....",   // 37
                                                                  "..#.....",   // 38
                                                                  "..######",   // the frame's bottom line
                                                                  "...#####",   // the shadow
                                                                  "........", "........"}));
    // The top right corner: the shadow begins one pixel down.
    EXPECT_EQ(pixels({18, 126, 23, 133}), (std::vector<std::string>{".......", ".......",
                                                                    "####...",   // the frame's top line
                                                                    "...##..",   // right line and shadow
                                                                    "...##.."}));
    // The bottom right corner.
    EXPECT_EQ(pixels({38, 126, 43, 133}),
              (std::vector<std::string>{"...##..", "#####..", "#####..", ".......", "......."}));
}

TEST_F(PopupPixels, ArrowIsSixRowsHighAndPointsDown)
{
    make(kBox);
    DrawPopup(popup_);
    // From (right - 17, top + 6) to (right - 5, top + 6), tip at (right - 11, top + 12):
    // in the middle of the first row the sides have come in by half a pixel each.
    EXPECT_EQ(pixels({25, 112, 33, 127}), (std::vector<std::string>{"...............",
                                                                    ".###########...",
                                                                    "..#########....",
                                                                    "...#######.....",
                                                                    "....#####......",
                                                                    ".....###.......",
                                                                    "......#........",
                                                                    "..............."}));
}

TEST_F(PopupPixels, ArrowAloneIsBlueWithColour)
{
    settings.useColor = 1;
    make(kBox);
    DrawPopup(popup_);
    EXPECT_EQ(pixels({26, 112, 27, 132}), (std::vector<std::string>{".bbbbbbbbbbb.....##."}));
    EXPECT_EQ(pixels({20, 30, 21, 34}), (std::vector<std::string>{"####"}));
}

TEST_F(PopupPixels, PanelIsBlueWithWhiteOutsideItsTopAndInsideItsBottom)
{
    ForeColor(blackColor);
    Rect ground{0, 0, 200, 300};
    PaintRect(&ground);
    ColorDialogRect(true, {10, 10, 15, 16}, 16300);
    EXPECT_EQ(pixels({8, 8, 17, 18}), (std::vector<std::string>{"##########",
                                                                "#......###",    // white, one up and left
                                                                "#.bbbbbb##",    // blue
                                                                "#.b###.b##",
                                                                "#.b###.b##",
                                                                "#.b....b##",    // white inside the bottom
                                                                "##bbbbbb##",
                                                                "##########", "##########"}));
}

TEST_F(PopupPixels, PanelIsOneBlackFrameWithoutColour)
{
    ColorDialogRect(false, {10, 10, 15, 16}, 16300);
    EXPECT_EQ(pixels({9, 9, 16, 17}), (std::vector<std::string>{"........", ".######.", ".#....#.", ".#....#.",
                                                                ".#....#.", ".######.", "........"}));
}

TEST_F(PopupPixels, TitleIsInvertedWhileTheMenuIsDown)
{
    make({20, 10, 40, 230}, "Font:");
    DrawPopup(popup_);
    const Rect title = record().titleRect;
    const Rect corner{title.top, title.left, static_cast<int16_t>(title.top + 1), static_cast<int16_t>(title.left + 3)};
    std::vector<std::string> during;
    machine.setSource([&]() -> std::optional<Input> {
        during = pixels(corner);
        machine.setSource({});
        return Input{.kind = Kind::mouseUp, .where = {2, 2}};
    });
    const std::vector<std::string> before = pixels(corner);
    machine.push({.kind = Kind::mouseDown, .where = {130, 200}});
    EventRecord event;
    WaitNextEvent(1 << mouseDown, &event, 1);
    machine.passTicks(100);
    EXPECT_FALSE(HandlePopupClick(popup_, true));
    EXPECT_EQ(before, (std::vector<std::string>{"..."}));
    EXPECT_EQ(during, (std::vector<std::string>{"###"}));
    EXPECT_EQ(pixels(corner), before);
}

TEST_F(PopupPixels, ChoosingTheCurrentItemAgainIsAChoice)
{
    make(kBox);
    record().prevItem = 2;
    pressAndGo({30, 60}, {30, 60});
    EXPECT_TRUE(HandlePopupClick(popup_, true));
    EXPECT_EQ(record().curItem, 5);
    EXPECT_EQ(record().prevItem, 5);
}

TEST_F(PopupPixels, ChoosingAnotherItemRemembersTheOneBefore)
{
    make(kBox);
    pressAndGo({30, 60}, {46, 60});
    EXPECT_TRUE(HandlePopupClick(popup_, true));
    EXPECT_EQ(record().curItem, 6);
    EXPECT_EQ(record().prevItem, 5);
    pressAndGo({30, 60}, {14, 60});
    EXPECT_TRUE(HandlePopupClick(popup_, false));
    EXPECT_EQ(record().curItem, 5);
}

TEST_F(PopupPixels, LeavingTheMenuWithoutAChoiceForgetsThePrevious)
{
    make(kBox);
    record().prevItem = 2;
    pressAndGo({30, 60}, {30, -90});
    EXPECT_FALSE(HandlePopupClick(popup_, true));
    EXPECT_EQ(record().curItem, 5);
    EXPECT_EQ(record().prevItem, 5);
}

TEST_F(PopupPixels, ControlIsRedrawnOnlyWhenAsked)
{
    make(kBox);
    for (bool redraw : {false, true}) {
        std::vector<std::string> lines;
        pressAndGo({30, 60}, {30, 60});
        toolbox::trace::setDrawingSink(toolbox::trace::into(lines));
        HandlePopupClick(popup_, redraw);
        toolbox::trace::setDrawingSink({});
        bool framed = false;
        for (const std::string &line : lines)
            framed |= line.starts_with("frameRect 30,20,130,40");
        EXPECT_EQ(framed, redraw);
    }
}

TEST_F(PopupPixels, DisposingWithoutErasingLeavesThePixels)
{
    for (bool erase : {false, true}) {
        make(kBox);
        DrawPopup(popup_);
        const Rect all{18, 28, 43, 133};
        const std::vector<std::string> before = pixels(all);
        DisposePopup(popup_, erase);
        DisposeHandle(popup_);
        popup_ = nullptr;
        if (erase)
            EXPECT_EQ(pixels(all), std::vector<std::string>(25, std::string(105, '.')));
        else
            EXPECT_EQ(pixels(all), before);
    }
}

}  // namespace
