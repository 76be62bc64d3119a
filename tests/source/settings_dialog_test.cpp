// The settings dialog opens, is used, and closes.
#include "source/settings_dialog.h"

namespace settings_dialog {
namespace {

TEST_F(SettingsDialog, OpensMakesAndCloses)
{
    make();
    EXPECT_EQ(run(), 0);
    EXPECT_TRUE(traced("dialog 16300 shown"));
    EXPECT_TRUE(traced("dialog 16300 closed"));
    EXPECT_NE(contentsOf(made()).find(pieceBytes(16501) + "35" + pieceBytes(16502)), std::string::npos);
    EXPECT_NE(contentsOf(made()).find(pieceBytes(16503) + "45" + pieceBytes(16504)), std::string::npos);
}

TEST_F(SettingsDialog, ReturnAndEnterMake)
{
    for (const char *key : {"return", "enter"}) {
        fs::remove(made());
        user.in(kCustomDialogID);
        user.key(key);
        user.in(0);
        user.answerSave(made());
        run();
        EXPECT_TRUE(fs::exists(made())) << key;
    }
    EXPECT_TRUE(traced("flash \"Make\""));
}

TEST_F(SettingsDialog, EscapeAndCommandPeriodCancel)
{
    user.key("escape");
    run();
    EXPECT_EQ(tracedTimes("flash \"Cancel\""), 1);
    user.in(kCustomDialogID);
    user.key(".", cmdKey);
    run();
    EXPECT_EQ(tracedTimes("flash \"Cancel\""), 2);
}

TEST_F(SettingsDialog, PeriodAloneGoesToTheHost)
{
    std::vector<int> keys;
    hostFilter = [&](DialogPtr, EventRecord *event, int16_t *) {
        if (event->what == keyDown)
            keys.push_back(event->message & charCodeMask);
        return false;
    };
    user.key(".");
    cancel();
    run();
    EXPECT_EQ(keys, std::vector<int>{'.'});
}

TEST_F(SettingsDialog, ClickOutsideEveryPopupGoesToTheHost)
{
    int clicks = 0;
    hostFilter = [&](DialogPtr, EventRecord *event, int16_t *) {
        clicks += event->what == mouseDown;
        return false;
    };
    user.choose(kFreq, "60 lpi");
    user.press(16);
    cancel();
    run();
    EXPECT_EQ(clicks, 2);
}

TEST_F(SettingsDialog, EscapeWithAnInactiveCancelGoesToTheHostAsItem2)
{
    int16_t seen = 0;
    hostFilter = [&](DialogPtr dialog, EventRecord *event, int16_t *itemHit) {
        if (event->what != keyDown)
            return false;
        seen = *itemHit;
        int16_t type;
        Handle item;
        Rect box;
        GetDItem(dialog, kCancel, &type, &item, &box);
        HiliteControl(reinterpret_cast<ControlHandle>(item), 0);
        *itemHit = 0;
        return true;
    };
    user.then([] {
        int16_t type;
        Handle item;
        Rect box;
        GetDItem(gCustomDialog, kCancel, &type, &item, &box);
        HiliteControl(reinterpret_cast<ControlHandle>(item), 255);
    });
    user.key("escape");
    user.key("escape");
    run();
    EXPECT_EQ(seen, 2);
    EXPECT_EQ(tracedTimes("flash \"Cancel\""), 1);
}

TEST_F(SettingsDialog, ReturnWithNothingChosenRefusesAndStays)
{
    user.choose(kFreq, 1);
    user.choose(kAngle, 1);
    user.key("return");
    dismiss();
    user.in(kCustomDialogID);
    user.choose(kError, 2);
    user.key("escape");
    run();
    EXPECT_EQ(tracedTimes("flash \"Make\""), 1);
    EXPECT_TRUE(traced(params(message(16155))));
    EXPECT_FALSE(traced("dialog 16399"));
}

TEST_F(SettingsDialog, ChoicesAreStoredAndComeBack)
{
    chooseOneOfEach();
    make();
    run();
    PrefsRec kept = stored();
    EXPECT_EQ(kept.freqItem, 10);
    EXPECT_EQ(kept.angleItem, 4);
    EXPECT_EQ(kept.spotItem, 7);
    EXPECT_EQ(kept.flatItem, 5);
    EXPECT_EQ(kept.annoItem, 2);
    EXPECT_EQ(kept.errorItem, 2);
    user.in(kCustomDialogID);
    user.then([&] { EXPECT_EQ(curItem(gSpotPopInfo), 7); });
    cancel();
    run();
}

TEST_F(SettingsDialog, CancelPutsEveryChoiceBack)
{
    PrefsRec before{};
    user.then([&] { before = *gPrefsPtr; });
    chooseOneOfEach();
    cancel();
    run();
    PrefsRec after = stored();
    EXPECT_EQ(memcmp(&before.freqItem, &after.freqItem, offsetof(PrefsRec, customDlgPos) - 32), 0);
    EXPECT_EQ(memcmp(before.freqStr, after.freqStr, 16 * 4), 0);
}

// The item that follows cancels once more, so only the filter alone shows it.
TEST_F(SettingsDialog, EscapeAndCommandPeriodPutTheChoicesBackAtOnce)
{
    user.then([] { gPrefsPtr->freqItem = 3; });
    for (auto [character, modifiers] : {std::pair{27, 0}, std::pair{int{'.'}, static_cast<int>(cmdKey)}}) {
        user.choose(kError, 2);
        user.then([character = character, modifiers = modifiers] {
            EventRecord event{};
            event.what = keyDown;
            event.message = static_cast<uintptr_t>(character);
            event.modifiers = static_cast<uint16_t>(modifiers);
            int16_t hit = 0;
            EXPECT_TRUE(CustomFilter(gCustomDialog, &event, &hit));
            EXPECT_EQ(hit, kCancel);
            EXPECT_EQ(gPrefsPtr->freqItem, 5);
            EXPECT_EQ(gPrefsPtr->errorItem, 1);
        });
    }
    cancel();
    run();
}

TEST_F(SettingsDialog, TextsOfFullLengthArePutBack)
{
    const std::string value = "0000000012.3456", text(255, 'x'), size = "000000000000012";
    user.then([&] {
        unsigned char *const values[] = {gPrefsPtr->freqStr, gPrefsPtr->angleStr, gPrefsPtr->flatStr};
        for (unsigned char *own : values)
            toolbox::setPascal(own, value, 15);
        toolbox::setPascal(gPrefsPtr->annoText, text, 255);
        toolbox::setPascal(gPrefsPtr->annoSizeStr, size, 15);
        SaveCustomSettings();
        for (unsigned char *own : values)
            toolbox::setPascal(own, "1", 15);
        toolbox::setPascal(gPrefsPtr->annoText, "another", 255);
        toolbox::setPascal(gPrefsPtr->annoSizeStr, "9", 15);
        DoCustomRevert();
        for (unsigned char *own : values)
            EXPECT_EQ(plain(own), value);
        EXPECT_EQ(plain(gPrefsPtr->annoText), text);
        EXPECT_EQ(plain(gPrefsPtr->annoSizeStr), size);
    });
    cancel();
    run();
}

TEST_F(SettingsDialog, FontsNameIsPutBackUpTo63Characters)
{
    user.then([] {
        for (size_t length : {63u, 64u, 70u}) {
            toolbox::setPascal(gFontNameStr, std::string(length, 'F'));
            SaveCustomSettings();
            EXPECT_EQ(gSavedFontNameStr[0], 63);
            toolbox::setPascal(gFontNameStr, "Courier");
            DoCustomRevert();
            EXPECT_EQ(plain(gFontNameStr), std::string(63, 'F'));
        }
    });
    cancel();
    run();
}

TEST_F(SettingsDialog, ChoosingTheCurrentItemAgainIsAChoice)
{
    user.choose(kFreq, "60 lpi");
    user.choose(kFreq, "60 lpi");
    user.then([&] {
        EXPECT_EQ(PopupRecord(gFreqPopInfo)->curItem, 10);
        EXPECT_EQ(PopupRecord(gFreqPopInfo)->prevItem, 10);
    });
    cancel();
    run();
    EXPECT_EQ(tracedTimes("popup 16136 gave 10"), 2);
}

TEST_F(SettingsDialog, LeavingAMenuSetsThePreviousItemToTheCurrentOne)
{
    user.choose(kFreq, "60 lpi");
    user.chooseNothing(kFreq);
    user.then([&] {
        EXPECT_EQ(PopupRecord(gFreqPopInfo)->curItem, 10);
        EXPECT_EQ(PopupRecord(gFreqPopInfo)->prevItem, 10);
    });
    cancel();
    run();
    EXPECT_TRUE(traced("popup 16136 gave nothing"));
}

TEST_F(SettingsDialog, MenuComesUpAtTheCurrentItem)
{
    user.choose(kFreq, "60 lpi");
    user.chooseNothing(kFreq);
    cancel();
    run();
    EXPECT_TRUE(traced("popup 16136 opened at item 10"));
}

TEST_F(SettingsDialog, OpensWhereItWasClosed)
{
    user.then([] { MoveWindow(gCustomDialog, 40, 77, false); });
    cancel();
    run();
    trace.clear();
    user.in(kCustomDialogID);
    make();
    run();
    EXPECT_TRUE(traced("dialog 16300 shown at 40,77"));
}

TEST_F(SettingsDialog, IsHiddenBeforeTheSaveDialogComesUp)
{
    make();
    run();
    std::vector<std::string> order;
    for (const std::string &line : trace)
        for (const char *step : {"dialog 16300 hidden", "dialog 16399 shown", "dialog 16300 closed"})
            if (line.starts_with(step))
                order.push_back(step);
    EXPECT_EQ(order,
              (std::vector<std::string>{"dialog 16300 hidden", "dialog 16399 shown", "dialog 16300 closed"}));
}

TEST_F(SettingsDialog, MakeKeepsThePosition)
{
    user.then([] { MoveWindow(gCustomDialog, 40, 77, false); });
    make();
    run();
    PrefsRec kept = stored();
    EXPECT_EQ(kept.customDlgPos.h, 40);
    EXPECT_EQ(kept.customDlgPos.v, 77);
}

TEST_F(SettingsDialog, AnyOneOfTheSixIsEnoughToMake)
{
    for (int only = kFreq; only <= kError; ++only) {
        SCOPED_TRACE(only);
        store([](PrefsRec &prefs) { prefs.freqItem = prefs.angleItem = 1; });
        fs::remove(made());
        user.in(kCustomDialogID);
        user.choose(only, only == kSpot ? 3 : 2);
        make();
        run();
        EXPECT_TRUE(fs::exists(made()));
    }
    EXPECT_FALSE(traced(params(message(16155))));
}

TEST_F(SettingsDialog, OpensCentredWithoutASavedPosition)
{
    store([](PrefsRec &prefs) {
        prefs.savePosition = 0;
        prefs.customDlgPos = {77, 40};
    });
    cancel();
    run();
    EXPECT_FALSE(traced("dialog 16300 shown at 40,77"));
    EXPECT_TRUE(traced("dialog 16300 shown at 124,"));
}

// Even where there is no display: it can still be used by keys.
TEST_F(SettingsDialog, OpensExactlyAtTheSavedPosition)
{
    for (Point where : {Point{77, 40}, Point{300, 5000}, Point{-900, -10}}) {
        trace.clear();
        store([&](PrefsRec &prefs) { prefs.customDlgPos = {where.v, where.h}; });
        user.in(kCustomDialogID);
        user.key("escape");
        run();
        EXPECT_TRUE(traced("dialog 16300 shown at " + std::to_string(where.h) + "," + std::to_string(where.v)));
        EXPECT_EQ(stored().customDlgPos.v, where.v);
        EXPECT_EQ(stored().customDlgPos.h, where.h);
    }
}

TEST_F(SettingsDialog, WildSavedPositionsCanBeCancelled)
{
    for (int16_t far : {32767, -32768}) {
        trace.clear();
        store([&](PrefsRec &prefs) {
            prefs.customDlgPos = {far, far};
            prefs.freqItem = prefs.angleItem = 1;
        });
        user.in(kCustomDialogID);
        user.key("return");
        dismiss();
        user.in(kCustomDialogID);
        user.key("escape");
        run();
        EXPECT_TRUE(traced("dialog 16129 shown at 110,")) << "the report is on the main screen";
        EXPECT_TRUE(traced("dialog 16300 closed"));
    }
}

// Nothing is written beyond the field, so the annotation's text stays.
TEST_F(SettingsDialog, SpotNameLongerThanItsFieldIsCutOnOpening)
{
    std::string annotation;
    store(
        [&](PrefsRec &prefs) {
            annotation = plain(prefs.annoText);
        },
        "{ 2 copy }");
    std::string fork = contentsOf(forkOfPreferences());
    size_t record = fork.find(static_cast<char>(7 + kPluginVersion.size()) + ("Riders " + kPluginVersion));
    ASSERT_NE(record, std::string::npos);
    fork[record + offsetof(PrefsRec, spotName)] = '\xFF';
    writeFile(forkOfPreferences(), fork);
    cancel();
    run();
    PrefsRec kept = stored();
    EXPECT_EQ(kept.spotName[0], 63);
    EXPECT_EQ(plain(kept.annoText), annotation);
    EXPECT_EQ(spotText, "{ 2 copy }");
}

TEST_F(SettingsDialog, PortIsAsItWasAfterwardsAndAfterDrawing)
{
    GrafPtr before = nullptr, after = nullptr;
    GetPort(&before);
    user.then([] {
        DialogPtr other = GetNewDialog(16133, nullptr, reinterpret_cast<WindowPtr>(-1));
        SetPort(other);
        CustomProc(gCustomDialog, 16);
        GrafPtr port = nullptr;
        GetPort(&port);
        EXPECT_EQ(port, other);
        SetPort(gCustomDialog);
        DisposDialog(other);
    });
    cancel();
    run();
    GetPort(&after);
    EXPECT_EQ(after, before);
}

// Closing the dialog makes another port the current one, whatever it was before.
TEST_F(SettingsDialog, PortThatIsNoWindowIsAsItWasAfterwards)
{
    GrafPtr before = nullptr, after = nullptr;
    GetPort(&before);
    GrafPort own = *before;
    SetPort(&own);
    cancel();
    run();
    GetPort(&after);
    EXPECT_EQ(after, &own);
    SetPort(before);
}

TEST_F(SettingsDialog, MissingDialogIsFatal)
{
    removeResource('DITL', 16300);
    dismiss();
    run();
    EXPECT_TRUE(ended);
    EXPECT_TRUE(traced(params(message(16129), "\r\rID = 78", " (dlog resource)")));
}

TEST_F(SettingsDialog, MissingFontMenuIsFatal)
{
    removeResource('MENU', kAnnoFontMenu);
    dismiss();
    run();
    EXPECT_TRUE(ended);
    EXPECT_TRUE(traced(params(message(16129), "\r\rID = 7", " (menu resource)")));
}

TEST_F(SettingsDialog, CancelledSaveClosesTheDialog)
{
    user.press(kMake);
    user.in(0);
    user.cancelFile();
    EXPECT_EQ(run(), 0);
    EXPECT_TRUE(traced("dialog 16300 closed"));
}

TEST_F(SettingsDialog, FailedMakeClosesTheDialog)
{
    user.then([] { toolbox::faults::failFileCall(toolbox::FileCall::open, 1, ioErr); });
    make();
    dismiss();
    EXPECT_EQ(run(), 0);
    EXPECT_TRUE(traced("dialog 16300 closed"));
}

TEST_F(SettingsDialog, PopupsFillTheirItems)
{
    user.then([&] {
        Rect box = PopupRecord(gFreqPopInfo)->popupRect;
        EXPECT_EQ(box.right - box.left, 194);
        EXPECT_EQ(box.bottom - box.top, 20);
    });
    cancel();
    run();
}

}  // namespace
}  // namespace settings_dialog
