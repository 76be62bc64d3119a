// The dialogs' colours as a person sees them: contrast at each depth, and a
// screen that changes while the dialog is open.
#include "support/plugin_test.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "ktColor.h"
#include "ktCustomDlg.h"
#include "toolbox/host/picture.h"
#include "toolbox/memory.h"

namespace {

enum { kMakeItem = 1, kFreqItem = 4, kFreqLabel = 10, kPanel = 16 };

// Relative luminance and contrast ratio of the Web Content Accessibility
// Guidelines 2.1.
double linear(uint32_t component)
{
    const double value = component / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double luminance(uint32_t pixel)
{
    return 0.2126 * linear(pixel >> 16 & 255) + 0.7152 * linear(pixel >> 8 & 255) + 0.0722 * linear(pixel & 255);
}

double contrast(uint32_t a, uint32_t b)
{
    const auto [dark, light] = std::minmax(luminance(a), luminance(b));
    return (light + 0.05) / (dark + 0.05);
}

// Legible for small text at the Guidelines' highest level; and what is no text.
constexpr double forText = 7, forLines = 3;

class ColorOnScreen : public PluginTest {
protected:
    void SetUp() override
    {
        PluginTest::SetUp();
        makeRecords();
        settings.useColor = 1;
        WritePrefs();
        gEnvirInfo = nullptr;
        gPrefsPtr = nullptr;
        user.in(16300);
    }

    // The settings dialog, with these steps of the user before Escape.
    void settingsDialog(const std::function<void()> &steps)
    {
        steps();
        user.key("escape");
        runCommand(0);
    }

    static Rect boxOf(int16_t number)
    {
        int16_t type;
        Handle item;
        Rect box;
        GetDItem(gCustomDialog, number, &type, &item, &box);
        return box;
    }
    // All pixels shown in a rectangle of the dialog.
    static std::vector<uint32_t> shown(Rect local)
    {
        GrafPtr before;
        GetPort(&before);
        SetPort(gCustomDialog);
        Point corner{local.top, local.left};
        LocalToGlobal(&corner);
        SetPort(before);
        const toolbox::Picture screen = toolbox::screenPicture(0);
        std::vector<uint32_t> pixels;
        for (int v = 0; v < local.bottom - local.top; ++v)
            for (int h = 0; h < local.right - local.left; ++h)
                pixels.push_back(screen.pixels[static_cast<size_t>((corner.v + v) * screen.width + corner.h + h)]);
        return pixels;
    }
    static uint32_t pixelAt(int h, int v)
    {
        return shown({static_cast<int16_t>(v), static_cast<int16_t>(h), static_cast<int16_t>(v + 1),
                      static_cast<int16_t>(h + 1)})
            .front();
    }
    // Of the strokes in a rectangle against what most of it is.
    static double contrastIn(Rect local)
    {
        const std::vector<uint32_t> pixels = shown(local);
        std::map<uint32_t, int> counts;
        for (uint32_t pixel : pixels)
            ++counts[pixel];
        const uint32_t ground = std::max_element(counts.begin(), counts.end(), [](const auto &a, const auto &b) {
                                    return a.second < b.second;
                                })->first;
        double best = 1;
        for (auto [pixel, count] : counts)
            if (count >= 5)   // a stroke, not an edge
                best = std::max(best, contrast(pixel, ground));
        return best;
    }
    static Rect inset(Rect r, int by)
    {
        InsetRect(&r, static_cast<int16_t>(by), static_cast<int16_t>(by));
        return r;
    }
    static ControlHandle button(int16_t number)
    {
        int16_t type;
        Handle item;
        Rect box;
        GetDItem(gCustomDialog, number, &type, &item, &box);
        return reinterpret_cast<ControlHandle>(item);
    }
};

TEST(Contrast, IsTheGuidelines)
{
    EXPECT_NEAR(contrast(0x000000, 0xFFFFFF), 21, 0.01);
    EXPECT_NEAR(contrast(0x777777, 0xFFFFFF), 4.48, 0.01);
    EXPECT_NEAR(contrast(0xFF0000, 0x0000FF), 2.15, 0.01);
}

TEST_F(ColorOnScreen, TextAndFramesAreLegibleAtEveryDepth)
{
    settingsDialog([this] {
        for (int depth : {2, 4, 8, 32}) {
            user.setDepth(depth);
            user.then([depth] {
                SCOPED_TRACE(depth);
                EXPECT_GE(contrastIn(boxOf(kFreqLabel)), forText) << "a label";
                EXPECT_GE(contrastIn(inset(boxOf(kMakeItem), 4)), forText) << "a button's words";
                Rect choice = inset(boxOf(kFreqItem), 3), arrow = choice;
                choice.right = static_cast<int16_t>(choice.right - 20);
                arrow.left = choice.right;
                EXPECT_GE(contrastIn(choice), forText) << "a popup's words";
                EXPECT_GE(contrastIn(arrow), forLines) << "its arrow";
                const Rect panel = boxOf(kPanel);
                EXPECT_GE(contrast(pixelAt(panel.left, panel.top + 10), pixelAt(panel.left + 5, panel.top + 10)),
                          forLines)
                    << "the panel's frame";
                const Rect make = boxOf(kMakeItem);
                EXPECT_GE(contrast(pixelAt(make.left, make.top + 10), pixelAt(make.left + 3, make.top + 10)), forLines)
                    << "a button's frame";
            });
        }
    });
}

TEST_F(ColorOnScreen, ADeeperScreenGetsEtchedFrameAndBlueArrowAtTheNextUpdate)
{
    machine.setScreens({{{0, 0, 480, 640}, 1}});
    auto frameAndArrow = [] {
        const Rect panel = boxOf(kPanel), popup = boxOf(kFreqItem);
        return std::vector<uint32_t>{pixelAt(panel.left - 1, panel.top + 10), pixelAt(panel.left, panel.top + 10),
                                     pixelAt(panel.left + 1, panel.top + 10), pixelAt(popup.right - 11, popup.top + 8)};
    };
    settingsDialog([&] {
        user.then([=] {
            EXPECT_EQ(frameAndArrow(), (std::vector<uint32_t>{0xFFFFFF, 0, 0xFFFFFF, 0})) << "plain on one bit";
        });
        user.setDepth(8);
        user.then([=] {
            const std::vector<uint32_t> now = frameAndArrow();
            EXPECT_EQ(now[0], 0xFFFFFFu) << "white just outside the left edge";
            EXPECT_EQ(now[1], 0x0000CCu) << "blue";
            EXPECT_EQ(now[3], 0x0000CCu) << "the arrow too";
        });
    });
}

TEST_F(ColorOnScreen, AnEarlySystemIsPlainWhateverTheScreen)
{
    configuration.systemVersion = 0x06FF;
    restartPlugin();
    user.in(16300);
    settingsDialog([this] {
        user.then([] {
            EXPECT_EQ((*button(kMakeItem))->colorTable, nullptr);
            EXPECT_EQ(contrastIn(boxOf(kFreqLabel)), 21) << "black on white";
        });
    });
}

// All buttons made disabled items before the dialog is coloured.
TEST_F(ColorOnScreen, ADialogOfDisabledButtonsGetsTheWindowsTableOnly)
{
    makeRecords();
    GetKTColor();
    gCustomDialog = GetNewDialog(kCustomDialogID, nullptr, reinterpret_cast<WindowPtr>(-1));
    for (int16_t number : {1, 2}) {
        int16_t type;
        Handle item;
        Rect box;
        GetDItem(gCustomDialog, number, &type, &item, &box);
        SetDItem(gCustomDialog, number, static_cast<int16_t>(type | itemDisable), item, &box);
    }
    ColorTheDialog(true, gCustomDialog);
    for (int16_t number : {1, 2})
        EXPECT_EQ((*button(number))->colorTable, nullptr) << number;
    ShowWindow(gCustomDialog);
    EXPECT_EQ(pixelAt(4, 4), 0xCCCCFFu) << "the window is coloured";
    DisposDialog(gCustomDialog);
    gCustomDialog = nullptr;
    DisposeKTColor();
}

}  // namespace
