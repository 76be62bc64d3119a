#include "source/open_settings.h"

#include <cstring>

#include "source/initUtilities.h"
#include "source/ktColor.h"
#include "source/ktCustomDlg.h"
#include "source/popup.h"
#include "toolbox/memory.h"

namespace {

const Rect kPanel = {30, 20, 90, 220};

class Color : public OpenSettings {
protected:
    std::vector<std::string> drawn(const std::function<void()> &action)
    {
        std::vector<std::string> lines;
        toolbox::trace::setDrawingSink(toolbox::trace::into(lines));
        action();
        toolbox::trace::setDrawingSink({});
        return lines;
    }

    // The frames of a panel.
    std::vector<std::string> frames(bool colour, int16_t dialogID = 16300)
    {
        return drawn([&] { ColorDialogRect(colour, kPanel, dialogID); });
    }

    bool arrowIsBlue()
    {
        for (const std::string &line : drawn([] { DrawPopup(gFreqPopInfo); }))
            if (line.starts_with("poly"))
                return line.find("color " + std::to_string(blueColor)) != std::string::npos;
        ADD_FAILURE() << "no arrow";
        return false;
    }

    ControlHandle button(DialogPtr dialog, int16_t number)
    {
        int16_t type;
        Handle item;
        Rect box;
        GetDItem(dialog, number, &type, &item, &box);
        return reinterpret_cast<ControlHandle>(item);
    }

    int32_t foreground()
    {
        GrafPtr port;
        GetPort(&port);
        return port->fgColor;
    }

    void restart(int depth, int32_t systemVersion)
    {
        machine.setDisplays({{{0, 0, 480, 640}, depth}});
        configuration.systemVersion = systemVersion;
        reopen();
    }
};

TEST_F(Color, PanelIsEtchedInBlueAndWhite)
{
    std::vector<std::string> lines = frames(true);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].substr(0, 22), "frameRect 19,29,219,89");
    EXPECT_EQ(lines[1].substr(0, 22), "frameRect 20,30,220,90");
    EXPECT_EQ(foreground(), blackColor);
}

TEST_F(Color, PanelIsOneFrameWithoutColour)
{
    std::vector<std::string> lines = frames(false);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].substr(0, 22), "frameRect 20,30,220,90");
}

TEST_F(Color, PlainFrameIsInTheCurrentColour)
{
    ForeColor(redColor);
    frames(false);
    EXPECT_EQ(foreground(), redColor);
    ForeColor(blackColor);
}

TEST_F(Color, DialogNumberHasNoEffect)
{
    EXPECT_EQ(frames(true, 16300), frames(true, 16301));
    EXPECT_EQ(frames(true, 16300), frames(true, 16302));
}

TEST_F(Color, BlackAndWhiteDisplayOrEarlySystemIsPlain)
{
    settings.useColor = 1;
    for (auto [depth, version] : {std::pair{1, 0x0755}, std::pair{8, 0x06FF}}) {
        restart(depth, version);
        settings.useColor = 1;
        EXPECT_EQ(frames(true).size(), 1u);
        EXPECT_FALSE(arrowIsBlue());
    }
    restart(2, 0x0700);
    settings.useColor = 1;
    EXPECT_EQ(frames(true).size(), 2u);
    EXPECT_TRUE(arrowIsBlue());
}

TEST_F(Color, DepthIsReadAtEveryDrawing)
{
    restart(1, 0x0755);
    settings.useColor = 1;
    EXPECT_EQ(frames(true).size(), 1u);
    machine.setDisplays({{{0, 0, 480, 640}, 8}});
    EXPECT_EQ(frames(true).size(), 2u);
    EXPECT_TRUE(arrowIsBlue());
    EXPECT_EQ(environment.pixDepth, 8);
}

TEST_F(Color, ArrowIsBlueOnlyWhenTheSettingsAskForColour)
{
    settings.useColor = 0;
    EXPECT_FALSE(arrowIsBlue());
    settings.useColor = 1;
    EXPECT_TRUE(arrowIsBlue());
    EXPECT_EQ(foreground(), blackColor);
}

TEST_F(Color, ForegroundStaysWithoutTheFlag)
{
    ColorThePopup(false);
    EXPECT_EQ(foreground(), blackColor);
    ColorThePopup(true);
    EXPECT_EQ(foreground(), blueColor);
    ForeColor(blackColor);
}

TEST_F(Color, OnlyEnabledPushButtonsGetATable)
{
    GetKTColor();
    // Cancel becomes a disabled item.
    int16_t type;
    Handle item;
    Rect box;
    GetDItem(gCustomDialog, 2, &type, &item, &box);
    SetDItem(gCustomDialog, 2, type | itemDisable, item, &box);
    ColorTheDialog(true, gCustomDialog);
    EXPECT_NE((*button(gCustomDialog, 1))->colorTable, nullptr);
    EXPECT_EQ((*button(gCustomDialog, 2))->colorTable, nullptr);
    DisposeKTColor();
}

TEST_F(Color, CheckBoxesAndOtherControlsStayPlain)
{
    GetKTColor();
    for (int kind : {chkCtrl, radCtrl, resCtrl}) {
        int16_t type;
        Handle item;
        Rect box;
        GetDItem(gCustomDialog, 2, &type, &item, &box);
        SetDItem(gCustomDialog, 2, static_cast<int16_t>(ctrlItem + kind), item, &box);
        ColorTheDialog(true, gCustomDialog);
        EXPECT_NE((*button(gCustomDialog, 1))->colorTable, nullptr);
        EXPECT_EQ((*button(gCustomDialog, 2))->colorTable, nullptr) << kind;
    }
    DisposeKTColor();
}

TEST_F(Color, LastItemIsColouredToo)
{
    // The second button of a question is its last item.
    GetKTColor();
    DialogPtr question = GetNewDialog(16132, nullptr, reinterpret_cast<WindowPtr>(-1));
    ASSERT_EQ(CountDITL(question), 5);
    ColorTheDialog(true, question);
    EXPECT_NE((*button(question, 5))->colorTable, nullptr);
    DisposDialog(question);
    DisposeKTColor();
}

TEST_F(Color, NothingIsAttachedOnABlackAndWhiteDisplay)
{
    restart(1, 0x0755);
    GetKTColor();
    ColorTheDialog(true, gCustomDialog);
    EXPECT_EQ((*button(gCustomDialog, 1))->colorTable, nullptr);
    DisposeKTColor();
}

TEST_F(Color, TablesNotLoadedAreSkipped)
{
    ColorTheDialog(true, gCustomDialog);
    EXPECT_EQ((*button(gCustomDialog, 1))->colorTable, nullptr);
}

TEST_F(Color, EachFlagHasItsOwnTables)
{
    GetKTColor();
    for (Boolean flag : {true, false}) {
        ColorTheDialog(flag, gCustomDialog);
        Handle table = (*button(gCustomDialog, 1))->colorTable;
        Handle original = flag ? gCCntlColor : gCntlColor;
        ASSERT_EQ(GetHandleSize(table), GetHandleSize(original));
        EXPECT_EQ(std::string(*table, GetHandleSize(table)), std::string(*original, GetHandleSize(original)));
    }
    DisposeKTColor();
    close();
}

TEST_F(Color, TablesAreReleasedAndForgotten)
{
    toolbox::LeakReport before = leftBehind();
    GetKTColor();
    EXPECT_NE(gCDlogColor, nullptr);
    DisposeKTColor();
    EXPECT_EQ(gCDlogColor, nullptr);
    EXPECT_EQ(gCntlColor, nullptr);
    EXPECT_EQ(leftBehind().text(), before.text());
}

TEST_F(Color, MissingTableIsFatal)
{
    const std::tuple<ResType, int16_t, int, const char *> tables[] = {{'dctb', 18000, 87, " (dctb resource)"},
                                                                      {'dctb', 18001, 87, " (dctb resource)"},
                                                                      {'cctb', 18000, 88, " (cctb resource)"},
                                                                      {'cctb', 18001, 88, " (cctb resource)"}};
    for (auto [type, id, number, context] : tables) {
        Handle table = Get1Resource(type, id);
        std::string bytes(*table, GetHandleSize(table));
        removeResource(type, id);
        trace.clear();
        dismiss();
        EXPECT_FALSE(guarded(GetKTColor));
        EXPECT_TRUE(traced(params(message(16129), "\r\rID = " + std::to_string(number), context)));
        reopen();
        Handle back = NewHandle(static_cast<Size>(bytes.size()));
        memcpy(*back, bytes.data(), bytes.size());
        AddResource(back, type, id, P(""));
        UpdateResFile(CurResFile());
        reopen();
    }
}

TEST_F(Color, CommandColoursItsDialogAndReleasesTheTables)
{
    close();
    settings.useColor = 1;
    WritePrefs();
    gPrefsPtr = nullptr;
    user.in(16300);
    user.then([&] { EXPECT_NE((*button(gCustomDialog, 1))->colorTable, nullptr); });
    user.press(2);
    runCommand(0);
}

TEST_F(Color, CommandLeavesItsDialogPlainWithoutTheSetting)
{
    close();
    gPrefsPtr = nullptr;
    user.in(16300);
    user.then([&] { EXPECT_EQ((*button(gCustomDialog, 1))->colorTable, nullptr); });
    user.press(2);
    runCommand(0);
}

}  // namespace
