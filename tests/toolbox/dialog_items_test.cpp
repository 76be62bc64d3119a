// Items of a dialog: making them, reading and changing them, drawing them.
#include "dialogs/identity.h"
#include "support/dialog_test.h"
#include "toolbox/memory.h"
#include "toolbox/resources.h"
#include "toolbox/scrap.h"

namespace {

const WindowPtr inFront = reinterpret_cast<WindowPtr>(-1);

struct ItemRead {
    int16_t type = -1;
    Handle handle = nullptr;
    Rect box{};
};

class DialogItems : public DialogTest {
protected:
    static ItemRead read(DialogPtr dialog, int number)
    {
        ItemRead item;
        GetDItem(dialog, static_cast<int16_t>(number), &item.type, &item.handle, &item.box);
        return item;
    }

    static std::string text(DialogPtr dialog, int number)
    {
        Str255 text;
        GetIText(read(dialog, number).handle, text);
        return plain(text);
    }

    static void install(DialogPtr dialog, int number, UserItemProcPtr procedure)
    {
        ItemRead item = read(dialog, number);
        SetDItem(dialog, static_cast<int16_t>(number), item.type, reinterpret_cast<Handle>(procedure), &item.box);
    }

    // An edit item that holds "spot", and a user item that a click at (60, 170) hits.
    static DialogPtr openSpotDialog()
    {
        ItemList().item(editText | itemDisable, 10, 10, 160, 16, "spot").item(userItem, 0, 100, 50, 50).add(600);
        addDialog(600, 50, 60, 200, 150, true);
        return GetNewDialog(600, nullptr, inFront);
    }

    // The text drawn by the call, piece by piece.
    template <typename Drawing>
    static std::vector<std::string> textDrawn(Drawing draw)
    {
        std::vector<std::string> lines, texts;
        toolbox::trace::setDrawingSink(toolbox::trace::into(lines));
        draw();
        toolbox::trace::setDrawingSink({});
        for (const std::string &line : lines)
            if (line.starts_with("text "))
                texts.push_back(line.substr(line.find('"') + 1, line.rfind('"') - line.find('"') - 1));
        return texts;
    }
};

}  // namespace

TEST_F(DialogItems, AMissingDialogOrItemListIsNil)
{
    EXPECT_EQ(GetNewDialog(600, nullptr, inFront), nullptr);
    addDialog(601, 0, 40, 100, 100);
    EXPECT_EQ(GetNewDialog(601, nullptr, inFront), nullptr);
    EXPECT_EQ(toolbox::leftBehind(), before) << toolbox::leftBehind().text();
}

TEST_F(DialogItems, EachKindIsReadBackAsItsListSays)
{
    ItemList()
        .item(btnCtrl + ctrlItem, 10, 10, 60, 20, "OK")
        .item(statText | itemDisable, 10, 40, 60, 16, "odd")
        .item(userItem | itemDisable, 10, 60, 30, 30)
        .item(editText, 10, 100, 60, 16, "text")
        .add(600);
    addDialog(600, 50, 60, 200, 150);
    DialogPtr dialog = GetNewDialog(600, nullptr, inFront);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(CountDITL(dialog), 4);
    EXPECT_EQ(read(dialog, 1).type, 4);
    EXPECT_EQ(read(dialog, 2).type, statText | itemDisable);
    EXPECT_EQ(text(dialog, 2), "odd");
    EXPECT_EQ(read(dialog, 3).handle, nullptr);
    EXPECT_EQ(read(dialog, 3).box.top, 60);
    EXPECT_EQ(text(dialog, 4), "text");
    EXPECT_EQ(toolbox::dialogs::idOf(dialog), 600);
    EXPECT_EQ(reinterpret_cast<DialogPeek>(dialog)->window.windowKind, dialogKind);
    CloseDialog(dialog);
    EXPECT_EQ(toolbox::dialogs::idOf(dialog), 0);
    EXPECT_EQ(toolbox::leftBehind(), before) << toolbox::leftBehind().text();
}

TEST_F(DialogItems, ADialogLeavesStorageThatItWasGiven)
{
    ItemList().item(editText, 10, 10, 60, 16, "text").add(600);
    addDialog(600, 50, 60, 200, 150);
    DialogRecord storage;
    DialogPtr dialog = GetNewDialog(600, &storage, inFront);
    EXPECT_EQ(dialog, reinterpret_cast<DialogPtr>(&storage));
    CloseDialog(dialog);
    EXPECT_EQ(toolbox::leftBehind(), before) << toolbox::leftBehind().text();
}

TEST_F(DialogItems, ShownHiddenAndClosedAreTraced)
{
    ItemList().item(userItem, 0, 0, 10, 10).add(600);
    addDialog(600, 50, 60, 200, 150);
    DialogPtr dialog = GetNewDialog(600, nullptr, inFront);
    EXPECT_FALSE(traced("shown"));
    MoveWindow(dialog, 70, 80, false);
    ShowWindow(dialog);
    ShowWindow(dialog);
    EXPECT_EQ(tracedTimes("dialog 600 shown at 70,80 200x150"), 1);
    HideWindow(dialog);
    HideWindow(dialog);
    EXPECT_EQ(tracedTimes("dialog 600 hidden"), 1);
    DisposDialog(dialog);
    EXPECT_EQ(tracedTimes("dialog 600 closed"), 1);
}

TEST_F(DialogItems, AUserItemDrawsWithThePortSet)
{
    static GrafPtr port;
    static int item, calls;
    port = nullptr;
    item = calls = 0;
    ItemList().item(ctrlItem, 10, 10, 60, 20, "OK").item(userItem, 0, 0, 1, 1).add(600);
    addDialog(600, 50, 60, 200, 150);
    DialogPtr dialog = GetNewDialog(600, nullptr, inFront);
    install(dialog, 2, [](DialogPtr, int16_t number) {
        GetPort(&port);
        item = number;
        ++calls;
    });
    EXPECT_EQ(calls, 0);
    ShowWindow(dialog);
    modal([](DialogPtr, EventRecord *event, int16_t *) -> Boolean { return event->what == nullEvent; });
    EXPECT_EQ(port, dialog);
    EXPECT_EQ(item, 2);
    EXPECT_EQ(calls, 1) << "once for the one update";
}

TEST_F(DialogItems, ParametersAreInsertedWhenTheTextIsDrawn)
{
    ItemList().item(statText | itemDisable, 0, 0, 300, 100, "a^0b^1c^2d^3e^4^").add(600);
    addDialog(600, 50, 60, 310, 150, true);
    DialogPtr dialog = GetNewDialog(600, nullptr, inFront);
    ParamText(P("1"), P(""), P("3"), P("^0"));
    EXPECT_EQ(textDrawn([&] { DrawDialog(dialog); }), std::vector<std::string>{"a1bc3d^0e^4^"});
    EXPECT_EQ(text(dialog, 1), "a^0b^1c^2d^3e^4^");
    ParamText(P("9"), P("\r\rID = -36"), P(""), P(""));
    EXPECT_TRUE(traced("params \"9\" \"\\r\\rID = -36\" \"\" \"\""));
    EXPECT_EQ(textDrawn([&] { DrawDialog(dialog); }).front(), "a9b");
}

TEST_F(DialogItems, HidingAnItemMovesItAwayAndShowingBringsItBack)
{
    ItemList().item(statText, 10, 10, 60, 16, "text").item(ctrlItem, 10, 40, 60, 20, "OK").add(600);
    addDialog(600, 50, 60, 200, 150, true);
    DialogPtr dialog = GetNewDialog(600, nullptr, inFront);
    HideDItem(dialog, 1);
    HideDItem(dialog, 1);
    EXPECT_EQ(read(dialog, 1).box.left, 10 + 16384);
    EXPECT_EQ(read(dialog, 1).box.right, 70 + 16384);
    EXPECT_EQ(FindDItem(dialog, Point{15, 15}), -1);
    ShowDItem(dialog, 1);
    ShowDItem(dialog, 1);
    EXPECT_EQ(read(dialog, 1).box.left, 10);
    EXPECT_EQ(FindDItem(dialog, Point{15, 15}), 0);
    HideDItem(dialog, 2);
    auto *button = reinterpret_cast<ControlHandle>(read(dialog, 2).handle);
    EXPECT_EQ(TestControl(button, Point{50, 20}), 0);
    ShowDItem(dialog, 2);
    EXPECT_EQ(TestControl(button, Point{50, 20}), inButton);
}

TEST_F(DialogItems, SettingTheCurrentTextIsSeenInTheEditRecord)
{
    ItemList().item(editText, 10, 10, 60, 16, "first").item(editText, 10, 40, 60, 16, "second").add(600);
    addDialog(600, 50, 60, 200, 150, true);
    DialogPtr dialog = GetNewDialog(600, nullptr, inFront);
    auto *record = reinterpret_cast<DialogPeek>(dialog);
    SetIText(read(dialog, 1).handle, P("12"));
    EXPECT_EQ((**record->textH).teLength, 2);
    EXPECT_LE((**record->textH).selEnd, 2);
    SelIText(dialog, 2, 0, 32767);
    EXPECT_EQ(record->editField, 1);
    EXPECT_EQ((**record->textH).selEnd, 6);
    EXPECT_EQ(text(dialog, 1), "12");
    SetIText(read(dialog, 1).handle, P("other"));
    EXPECT_EQ((**record->textH).teLength, 6) << "not the one being edited";
}

TEST_F(DialogItems, TextIsReadAsFarAsAPascalStringGoes)
{
    Handle long_ = NewHandleClear(400);
    Str255 text;
    GetIText(long_, text);
    EXPECT_EQ(text[0], 255);
    DisposeHandle(long_);
}

TEST_F(DialogItems, CommandKeysEditThroughTheDeskScrap)
{
    DialogPtr dialog = openSpotDialog();
    key('x', cmdKey);
    click(60, 170);
    modal();
    EXPECT_EQ(text(dialog, 1), "");
    int32_t offset;
    EXPECT_EQ(GetScrap(nullptr, 'TEXT', &offset), 4);
    key('v', cmdKey);
    key('v', cmdKey);
    click(60, 170);
    modal();
    EXPECT_EQ(text(dialog, 1), "spotspot");
    machine.putOnClipboard("12");
    key('v', cmdKey);
    click(60, 170);
    modal();
    EXPECT_EQ(text(dialog, 1), "spotspot12") << "what another program copied last";
}

TEST_F(DialogItems, WhatACommandKeyCopiesReplacesTheDeskScrap)
{
    openSpotDialog();
    int32_t offset;
    PutScrap(1, 'PICT', "p");
    key('c', cmdKey);
    click(60, 170);
    modal();
    EXPECT_EQ(GetScrap(nullptr, 'TEXT', &offset), 4);
    EXPECT_LT(GetScrap(nullptr, 'PICT', &offset), 0) << "it belongs to what was copied before";
}

TEST_F(DialogItems, BeforeSystemSevenCommandKeysAreLeftToTheFilter)
{
    configuration.systemVersion = 0x0608;
    restart();
    openNewResourceFile((std::filesystem::create_directory(folder / "six"), (folder / "six").string()));
    DialogPtr dialog = openSpotDialog();
    key('x', cmdKey);
    click(60, 170);
    modal();
    EXPECT_EQ(text(dialog, 1), "spot");
    DlgCut(dialog);
    EXPECT_EQ(text(dialog, 1), "");
    DlgPaste(dialog);
    EXPECT_EQ(text(dialog, 1), "spot");
}

TEST_F(DialogItems, TheEditedTextCanBeClearedWithoutTheScrap)
{
    DialogPtr dialog = openSpotDialog();
    DlgDelete(dialog);
    EXPECT_EQ(text(dialog, 1), "");
    DlgPaste(dialog);
    EXPECT_EQ(text(dialog, 1), "") << "nothing was cut";
}

TEST_F(DialogItems, AControlMayBeDescribedByAResource)
{
    const int resourceControl = ctrlItem + resCtrl;
    ResourceBytes control;
    control.rect(20, 30, 100, 20).word(2).byte(1).byte(0).word(5).word(1).word(radioButProc).longWord(77);
    control.pascal("Round").add('CNTL', 601);
    ItemList()
        .item(resourceControl, 0, 0, 10, 10, std::string("\2\x59", 2))
        .item(resourceControl, 0, 50, 10, 10, std::string("\2\x5A", 2))
        .add(600);
    addDialog(600, 50, 60, 200, 150, true);
    DialogPtr dialog = GetNewDialog(600, nullptr, inFront);
    ASSERT_NE(dialog, nullptr);
    int16_t type;
    Handle item;
    Rect box;
    GetDItem(dialog, 1, &type, &item, &box);
    ASSERT_NE(item, nullptr);
    ControlHandle made = reinterpret_cast<ControlHandle>(item);
    Str255 title;
    GetCTitle(made, title);
    EXPECT_EQ(plain(title), "Round");
    EXPECT_EQ(GetCtlValue(made), 2);
    SetCtlValue(made, 9);
    EXPECT_EQ(GetCtlValue(made), 5);
    EXPECT_EQ((**made).contrlRfCon, 77);
    EXPECT_EQ(box.left, 20) << "the control's own place";
    GetDItem(dialog, 2, &type, &item, &box);
    EXPECT_EQ(item, nullptr) << "there is no such resource: nothing to press";
    DisposDialog(dialog);
}

TEST_F(DialogItems, UpdatingARegionDrawsNothingElse)
{
    ItemList().item(statText, 10, 10, 60, 16, "text").add(600);
    addDialog(600, 50, 60, 200, 150, true);
    DialogPtr dialog = GetNewDialog(600, nullptr, inFront);
    RgnHandle part = NewRgn();
    SetRectRgn(part, 0, 0, 5, 5);
    RgnHandle visible = NewRgn();
    CopyRgn(dialog->visRgn, visible);
    UpdtDialog(dialog, part);
    EXPECT_TRUE(EqualRgn(dialog->visRgn, visible));
    DisposeRgn(part);
    DisposeRgn(visible);
}

TEST_F(DialogItems, DamagedResourcesAreRefused)
{
    ResourceBytes list;
    list.word(3).longWord(0).rect(0, 0, 10, 10).byte(4).byte(200).byte('x');
    list.add('DITL', 600);
    addDialog(600, 50, 60, 200, 150);
    EXPECT_EQ(GetNewDialog(600, nullptr, inFront), nullptr);
    ResourceBytes().word(1).word(2).add('DLOG', 601);
    EXPECT_EQ(GetNewDialog(601, nullptr, inFront), nullptr);
    ResourceBytes().word(1).add('ALRT', 602);
    EXPECT_EQ(Alert(602, nullptr), -1);
    EXPECT_EQ(toolbox::leftBehind(), before) << toolbox::leftBehind().text();
}

TEST_F(DialogItems, WithoutMemoryThereIsNoDialogAndNothingIsLeft)
{
    ItemList()
        .item(ctrlItem, 10, 10, 60, 20, "OK")
        .item(editText, 10, 40, 60, 16, "text")
        .item(statText, 10, 70, 60, 16, "text")
        .add(600);
    addDialog(600, 50, 60, 200, 150);
    int refused = 0;
    for (int nth = 1;; ++nth) {
        toolbox::faults::failAllocation(nth);
        DialogPtr dialog = GetNewDialog(600, nullptr, inFront);
        bool met = toolbox::faults::met();
        toolbox::faults::clear();
        refused += !dialog;
        if (dialog)
            CloseDialog(dialog);
        EXPECT_EQ(toolbox::leftBehind(), before) << nth << ": " << toolbox::leftBehind().text();
        if (!met)
            break;
        ASSERT_LT(nth, 1000);
    }
    EXPECT_GT(refused, 5);
}

TEST_F(DialogItems, AnyItemListIsReadOrRefused)
{
    unsigned seed = 77001;
    SCOPED_TRACE("seed " + std::to_string(seed));
    for (int round = 0; round < 60; ++round) {
        ResourceBytes list;
        list.word(round % 4);
        for (int i = 0; i < round; ++i) {
            seed = seed * 1103515245 + 12345;
            list.byte(i % 14 == 12 ? 1 << (seed >> 16) % 8 : static_cast<int>(seed >> 16) & (i % 14 == 13 ? 7 : 255));
        }
        list.add('DITL', 700 + round);
        ResourceBytes dialog;
        dialog.rect(50, 60, 100, 80).word(1).byte(1).byte(0).byte(0).byte(0);
        dialog.longWord(0).word(700 + round).pascal("").add('DLOG', 700 + round);
        if (DialogPtr made = GetNewDialog(static_cast<int16_t>(700 + round), nullptr, inFront)) {
            DrawDialog(made);
            CloseDialog(made);
        }
        ASSERT_EQ(toolbox::leftBehind(), before) << round;
    }
}
