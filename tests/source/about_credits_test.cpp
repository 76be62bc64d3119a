// The credits panel.
#include "source/about_box.h"

namespace about {
namespace {

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

TEST_F(Credits, ReturnsOne)
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
            toolbox::Picture display = toolbox::displayPicture(0);
            Point corner{4, 4};
            LocalToGlobal(&corner);
            corners.push_back(display.pixels[static_cast<size_t>(corner.v * display.width + corner.h)]);
        });
        user.key("escape");
        runCommand(kCommandSettings);
    }
    EXPECT_EQ(corners, (std::vector<uint32_t>{0xCCCCFF, 0xFFFFFF}));
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

}  // namespace
}  // namespace about
