// The dialog for a value opens, stores it, and closes.
#include "source/value_entry_dialog.h"

namespace value_entry_dialog {
namespace {

TEST_F(ValueEntry, OpensOverTheSettingsWithTheValueSelected)
{
    user.then([&] {
        EXPECT_EQ(field(), "45");
        EXPECT_EQ(selection(), (std::pair<int, int>{0, 2}));
        EXPECT_EQ(GetWRefCon(gTheDialog), kFreqKind);
    });
    user.key("escape");
    run(kFreqKind);
    EXPECT_TRUE(traced("dialog 16301 shown"));
    EXPECT_EQ(gTheDialog, nullptr);
}

TEST_F(ValueEntry, OpensInTheMiddleOfTheSettingsDialog)
{
    MoveWindow(gCustomDialog, 60, 70, false);  // 392 by 252
    user.key("escape");
    run(kFreqKind);
    EXPECT_TRUE(traced("dialog 16301 shown at 90,138 332x116"));
}

TEST_F(ValueEntry, ShowsLabelAndUnitOfItsKindOnly)
{
    const std::pair<int16_t, std::vector<int>> shown[] = {
        {kFreqKind, {5, 8}}, {kAngleKind, {6, 9}}, {kFlatKind, {7}}};
    for (const auto &[kind, items] : shown) {
        user.in(kFreqDialogID);
        user.then([&, expected = items] {
            std::vector<int> visible;
            for (int16_t number = 5; number <= 9; ++number) {
                int16_t type;
                Handle item;
                Rect box;
                GetDItem(gTheDialog, number, &type, &item, &box);
                if (box.left < 8192)
                    visible.push_back(number);
            }
            EXPECT_EQ(visible, expected);
        });
        user.key("escape");
        run(kind);
    }
}

TEST_F(ValueEntry, ConfirmedValueIsStored)
{
    expectStored(kFreqKind, "85.5", settings.freqStr, "85.5");
    expectStored(kAngleKind, "17", settings.angleStr, "17");
    expectStored(kFlatKind, "0.7", settings.flatStr, "0.7");
}

TEST_F(ValueEntry, CancelRestoresTextAndPopup)
{
    SetPopupMenuItem(gFreqPopInfo, 21);
    for (auto cancelling : {std::pair{"escape", 0}, std::pair{".", static_cast<int>(cmdKey)}}) {
        user.in(kFreqDialogID);
        user.type("77");
        user.key(cancelling.first, cancelling.second);
        EXPECT_FALSE(run(kFreqKind));
        EXPECT_EQ(plain(settings.freqStr), "45");
        EXPECT_EQ(PopupRecord(gFreqPopInfo)->curItem, 5);
    }
    EXPECT_EQ(tracedTimes("flash \"Cancel\""), 2);
}

TEST_F(ValueEntry, CancelRestoresATextOfFullLength)
{
    const std::string longest = "0000000012.3456";
    toolbox::setPascal(settings.freqStr, longest, 15);
    user.then([&] { toolbox::setPascal(settings.freqStr, "77", 15); });
    user.key("escape");
    EXPECT_FALSE(run(kFreqKind));
    EXPECT_EQ(plain(settings.freqStr), longest);
}

TEST_F(ValueEntry, CancelTicksThePreviousItemOfItsOwnPopup)
{
    SetPopupMenuItem(gAnglePopInfo, 15);
    user.press(2);
    EXPECT_FALSE(run(kAngleKind));
    int16_t mark = 0;
    GetItemMark(PopupRecord(gAnglePopInfo)->menu, 6, &mark);
    EXPECT_NE(mark, 0);
    EXPECT_EQ(PopupRecord(gFreqPopInfo)->curItem, 5);
}

TEST_F(ValueEntry, UnknownKindStoresNothing)
{
    PrefsRec before = settings;
    user.type("12");
    user.press(2);
    EXPECT_FALSE(run(9));
    EXPECT_EQ(memcmp(&before, &settings, sizeof before), 0);
}

TEST_F(ValueEntry, MissingDialogIsFatal)
{
    removeResource('DLOG', 16301);
    dismiss();
    run(kFreqKind);
    EXPECT_TRUE(ended);
    EXPECT_TRUE(traced(params(message(16129), "\r\rID = 80", " (dlog resource)")));
}

TEST_F(ValueEntry, IsHiddenAndThenClosed)
{
    for (const char *key : {"return", "escape"}) {
        trace.clear();
        user.in(kFreqDialogID);
        user.key(key);
        run(kFreqKind);
        std::vector<std::string> order;
        for (const std::string &line : trace)
            for (const char *step : {"dialog 16301 hidden", "dialog 16301 closed"})
                if (line.starts_with(step))
                    order.push_back(step);
        EXPECT_EQ(order, (std::vector<std::string>{"dialog 16301 hidden", "dialog 16301 closed"}));
    }
}

TEST_F(ValueEntry, PortIsAsItWasAfterwardsAndAfterDrawing)
{
    DialogPtr other = GetNewDialog(16133, nullptr, reinterpret_cast<WindowPtr>(-1));
    GrafPtr port = nullptr;
    SetPort(other);
    user.then([&] {
        SetPort(other);
        FreqProc(gTheDialog, 10);
        GetPort(&port);
        EXPECT_EQ(port, other);
        SetPort(gTheDialog);
    });
    user.key("escape");
    run(kFreqKind);
    GetPort(&port);
    EXPECT_EQ(port, other);
    SetPort(gCustomDialog);
    DisposDialog(other);
}

TEST_F(ValueEntry, PanelIsFramed)
{
    std::vector<std::string> lines;
    user.then([&] {
        toolbox::trace::setDrawingSink(toolbox::trace::into(lines));
        FreqProc(gTheDialog, 10);
        toolbox::trace::setDrawingSink({});
    });
    user.key("escape");
    run(kFreqKind);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].substr(0, 22), "frameRect 20,20,312,66");
}

}  // namespace
}  // namespace value_entry_dialog
