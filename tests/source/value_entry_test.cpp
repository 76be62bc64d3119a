#include "source/open_settings.h"

#include <cstring>

#include "source/initUtilities.h"
#include "source/ktCustomDlg.h"
#include "source/ktFreqDlg.h"
#include "source/popup.h"
#include "toolbox/scrap.h"

namespace {

// --- The check without reporting --------------------------------------------

class ValueCheck : public PluginTest {
protected:
    void SetUp() override
    {
        PluginTest::SetUp();
        makeRecords();
    }

    bool passes(const std::string &text, int16_t kind)
    {
        P copy(text);
        bool passed = DoFreqStrCheck(copy, kind, false);
        EXPECT_EQ(plain(copy), text) << "the text was changed";
        EXPECT_FALSE(traced("dialog"));
        return passed;
    }
};

TEST_F(ValueCheck, FrequencyIsFrom1To999)
{
    for (const char *text : {"1", "999", "1.5", "998.9999", "0.9999e"})
        EXPECT_EQ(passes(text, kFreqKind), std::string(text) != "0.9999e") << text;
    for (const char *text : {"", "0", "0.9999", "999.0001", "-1", "1a", "1.2.3", "."})
        EXPECT_FALSE(passes(text, kFreqKind)) << text;
}

TEST_F(ValueCheck, AngleIsFrom0To360)
{
    for (const char *text : {"0", "360", ".5", "22.5", "0.0001"})
        EXPECT_TRUE(passes(text, kAngleKind)) << text;
    for (const char *text : {"", ".", "360.5", "361", "-1", "4 5"})
        EXPECT_FALSE(passes(text, kAngleKind)) << text;
}

TEST_F(ValueCheck, FlatnessIsFrom02To200)
{
    for (const char *text : {"0.2", "200", "1", ".25"})
        EXPECT_TRUE(passes(text, kFlatKind)) << text;
    for (const char *text : {"", "0.19", "0.1999", "200.5", "."})
        EXPECT_FALSE(passes(text, kFlatKind)) << text;
}

TEST_F(ValueCheck, FourDecimalsAreTheMost)
{
    EXPECT_TRUE(passes("12.3456", kFreqKind));
    EXPECT_FALSE(passes("12.34567", kFreqKind));
}

TEST_F(ValueCheck, WholeNumberOfFourCharactersFails)
{
    EXPECT_TRUE(passes("100", kFreqKind));
    EXPECT_FALSE(passes("0100", kFreqKind));
    EXPECT_FALSE(passes("0045", kAngleKind));
}

TEST_F(ValueCheck, SeparatorIsTheUsers)
{
    environment.decimalPt = ',';
    EXPECT_TRUE(passes("22,5", kAngleKind));
    EXPECT_FALSE(passes("22.5", kAngleKind));
}

TEST_F(ValueCheck, UnknownKindMindsOnlyTheForm)
{
    EXPECT_TRUE(passes("100000", 8));
    EXPECT_TRUE(passes("", 4));
    EXPECT_FALSE(passes("1a", 8));
    EXPECT_FALSE(passes("1.2.3", 8));
}

// --- The dialog -------------------------------------------------------------

class ValueEntry : public OpenSettings {
protected:
    void SetUp() override
    {
        OpenSettings::SetUp();
        prepare();
    }

    void reopenWith(char separator, int32_t systemVersion = 0x0755)
    {
        configuration.decimalPoint = separator;
        configuration.systemVersion = systemVersion;
        reopen();
        prepare();
    }

    // Brings the settings dialog to the state in which it asks for a value.
    void prepare()
    {
        ShowWindow(gCustomDialog);
        SelectWindow(gCustomDialog);
        toolbox::setPascal(settings.freqStr, "45", 15);
        toolbox::setPascal(settings.angleStr, "30", 15);
        toolbox::setPascal(settings.flatStr, "3", 15);
        user.in(kFreqDialogID);
    }

    bool run(int16_t kind)
    {
        Boolean confirmed = false;
        guarded([&] { confirmed = HandleFreqDialog(kind); });
        EXPECT_TRUE(user.idle());
        return confirmed;
    }

    std::string field()
    {
        int16_t type;
        Handle item;
        Rect box;
        Str255 text;
        GetDItem(gTheDialog, 4, &type, &item, &box);
        GetIText(item, text);
        return plain(text);
    }

    std::pair<int, int> selection()
    {
        TEHandle text = reinterpret_cast<DialogPeek>(gTheDialog)->textH;
        return {(*text)->selStart, (*text)->selEnd};
    }

    // How OK refuses a text: the message, and what the field then holds.
    struct Refusal {
        int16_t message;
        std::string field;
    };
    void expectRefusal(int16_t kind, const std::string &typed, const Refusal &refusal)
    {
        SCOPED_TRACE(typed);
        trace.clear();
        user.in(kFreqDialogID);
        user.key("backspace");
        if (typed.find_first_not_of("0123456789.,") == std::string::npos)
            user.type(typed);
        else
            paste(typed);
        user.key("return");
        dismiss();
        user.in(kFreqDialogID);
        user.then([&] {
            EXPECT_EQ(field(), refusal.field);
            EXPECT_EQ(selection(), (std::pair<int, int>{0, static_cast<int>(refusal.field.size())}));
        });
        user.key("escape");
        EXPECT_FALSE(run(kind));
        EXPECT_TRUE(traced(params(message(refusal.message))));
    }

    void expectStored(int16_t kind, const std::string &typed, const unsigned char *setting, const std::string &stored)
    {
        SCOPED_TRACE(typed);
        user.in(kFreqDialogID);
        user.key("backspace");
        user.type(typed);
        user.key("return");
        EXPECT_TRUE(run(kind));
        EXPECT_EQ(plain(setting), stored);
    }

    void paste(const std::string &text)
    {
        user.putOnClipboard(text);
        user.key("v", cmdKey);
    }
};

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

TEST_F(ValueEntry, BoundsPass)
{
    for (const char *text : {"1", "999"})
        expectStored(kFreqKind, text, settings.freqStr, text);
    for (const char *text : {"360", "0"})
        expectStored(kAngleKind, text, settings.angleStr, text);
    for (const char *text : {"0.2", "200"})
        expectStored(kFlatKind, text, settings.flatStr, text);
}

TEST_F(ValueEntry, NumbersAreTidied)
{
    expectStored(kFreqKind, "007", settings.freqStr, "7");
    expectStored(kFreqKind, "12.500", settings.freqStr, "12.5");
    expectStored(kFreqKind, "12.", settings.freqStr, "12");
    expectStored(kFreqKind, "12.000", settings.freqStr, "12");
}

TEST_F(ValueEntry, EmptyAngleIs0)
{
    for (const char *text : {"", "00", ".", "0.0"})
        expectStored(kAngleKind, text, settings.angleStr, "0");
    expectStored(kAngleKind, ".5", settings.angleStr, "0.5");
    expectStored(kAngleKind, "00.5", settings.angleStr, "0.5");
}

TEST_F(ValueEntry, FrequencyOutOfRangeIsCorrected)
{
    expectRefusal(kFreqKind, "0.9999", {16141, "1"});
    expectRefusal(kFreqKind, "999.0001", {16141, "999"});
    expectRefusal(kFreqKind, "1234", {16141, "999"});
    expectRefusal(kFreqKind, "", {16141, "45"});
    expectRefusal(kFreqKind, ".", {16141, "45"});
}

TEST_F(ValueEntry, AngleOutOfRangeIsCorrected)
{
    expectRefusal(kAngleKind, "360.1", {16142, "360"});
}

TEST_F(ValueEntry, FlatnessOutOfRangeIsCorrected)
{
    expectRefusal(kFlatKind, "0.19", {16143, "0.2"});
    expectRefusal(kFlatKind, "200.5", {16143, "200"});
    expectRefusal(kFlatKind, ".", {16143, "3"});
}

TEST_F(ValueEntry, LowestFlatnessHasTheUsersSeparator)
{
    reopenWith(',');
    expectRefusal(kFlatKind, "0,19", {16143, "0,2"});
}

TEST_F(ValueEntry, FifthDecimalIsCutOff)
{
    expectRefusal(kFreqKind, "12.34567", {16144, "12.3456"});
}

TEST_F(ValueEntry, TwoSeparatorsAreRefusedOnOKOnly)
{
    expectRefusal(kFreqKind, "1.2.3", {16140, "45"});
}

TEST_F(ValueEntry, PastedLettersAreRefusedOnOKOnly)
{
    expectRefusal(kFreqKind, "1a", {16132, "45"});
}

TEST_F(ValueEntry, RefusedValueCanBeConfirmedNext)
{
    user.type("5000");
    user.key("return");
    dismiss();
    user.in(kFreqDialogID);
    user.key("return");
    EXPECT_TRUE(run(kFreqKind));
    EXPECT_EQ(plain(settings.freqStr), "999");
}

TEST_F(ValueEntry, EnterIsRefusedAndConfirmsAsReturnDoes)
{
    user.type("5000");
    user.key("enter");
    dismiss();
    user.in(kFreqDialogID);
    user.then([&] {
        EXPECT_EQ(field(), "999");
        EXPECT_EQ(plain(settings.freqStr), "45") << "nothing is stored yet";
    });
    user.key("enter");
    EXPECT_TRUE(run(kFreqKind));
    EXPECT_EQ(plain(settings.freqStr), "999");
    EXPECT_EQ(tracedTimes("flash \"OK\""), 2);
    EXPECT_TRUE(traced(params(message(16141))));
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

// --- Keys -------------------------------------------------------------------

TEST_F(ValueEntry, SixteenthCharacterBeeps)
{
    user.type("123456789012345");
    user.then([&] { EXPECT_EQ(machine.beeps(), 0); });
    user.type("6");
    user.then([&] {
        EXPECT_EQ(machine.beeps(), 1);
        EXPECT_EQ(field(), "123456789012345");
    });
    user.key("escape");
    run(kFreqKind);
}

TEST_F(ValueEntry, DigitReplacesASelectionInAFullField)
{
    user.type("123456789012345");
    user.then([] { SelIText(gTheDialog, 4, 3, 6); });
    user.type("0");
    user.then([&] {
        EXPECT_EQ(machine.beeps(), 0);
        EXPECT_EQ(field(), "1230789012345");
    });
    user.key("escape");
    run(kFreqKind);
}

TEST_F(ValueEntry, OtherCharactersBeep)
{
    user.type("a- ,");
    user.then([&] {
        EXPECT_EQ(machine.beeps(), 4);
        EXPECT_EQ(field(), "45");
    });
    user.key("tab");
    user.then([&] { EXPECT_EQ(machine.beeps(), 5); });
    user.key("escape");
    run(kFreqKind);
}

TEST_F(ValueEntry, OnlyTheUsersSeparatorIsTaken)
{
    reopenWith(',');
    user.type("1,5");
    user.type(".");
    user.then([&] {
        EXPECT_EQ(field(), "1,5");
        EXPECT_EQ(machine.beeps(), 1);
    });
    user.key("escape");
    run(kFreqKind);
}

TEST_F(ValueEntry, BackspaceAndArrowsEdit)
{
    user.key("right");
    user.key("left");
    user.key("backspace");
    user.then([&] { EXPECT_EQ(field(), "5"); });
    user.key("escape");
    run(kFreqKind);
}

class HeldKey : public ValueEntry {
protected:
    // Whether the filter takes a repeat of the key; false: lets it through.
    bool repeated(char key, uint16_t modifiers = 0)
    {
        EventRecord event{};
        event.what = autoKey;
        event.message = static_cast<unsigned char>(key);
        event.modifiers = modifiers;
        int16_t itemHit = 0;
        bool taken = FreqFilter(gTheDialog, &event, &itemHit);
        EXPECT_EQ(itemHit, 0);
        return taken;
    }
};

TEST_F(HeldKey, OnlyDigitsAndEditingKeysRepeat)
{
    user.then([&] {
        for (char key : {'0', '9', '\x08', '\x1C', '\x1F'})
            EXPECT_FALSE(repeated(key)) << static_cast<int>(key);
        EXPECT_EQ(machine.beeps(), 0);
        for (char key : {'.', '\r', '\x03', '\x1B', 'a'})
            EXPECT_TRUE(repeated(key)) << static_cast<int>(key);
        EXPECT_TRUE(repeated('v', cmdKey));
        EXPECT_TRUE(repeated('1', cmdKey));
        EXPECT_EQ(machine.beeps(), 7);
    });
    user.type("123456789012345");
    user.then([&] {
        EXPECT_TRUE(repeated('1'));
        EXPECT_FALSE(repeated('\x08'));
    });
    user.key("escape");
    run(kFreqKind);
}

// --- Pasting ----------------------------------------------------------------

TEST_F(ValueEntry, PasteThatFitsIsTaken)
{
    paste("12.5");
    user.then([&] { EXPECT_EQ(field(), "12.5"); });
    user.key("return");
    EXPECT_TRUE(run(kFreqKind));
    EXPECT_EQ(plain(settings.freqStr), "12.5");
}

TEST_F(ValueEntry, PasteOf16CharactersIsRefusedWithAMessage)
{
    paste("1234567890123456");
    dismiss();
    user.in(kFreqDialogID);
    user.then([&] { EXPECT_EQ(field(), "45"); });
    user.key("escape");
    run(kFreqKind);
    EXPECT_TRUE(traced(params(message(16162))));
}

TEST_F(ValueEntry, PasteIsMeasuredWithWhatStaysInTheField)
{
    user.type("1234567890");
    paste("123456");
    dismiss();
    user.in(kFreqDialogID);
    user.then([] { SelIText(gTheDialog, 4, 0, 10); });
    paste("123456");
    user.then([&] { EXPECT_EQ(field(), "123456"); });
    user.key("escape");
    run(kFreqKind);
    EXPECT_EQ(tracedTimes(params(message(16162))), 1);
}

class ValueEntryBefore7 : public ValueEntry {
protected:
    void SetUp() override
    {
        ValueEntry::SetUp();
        reopenWith('.', 0x0605);
    }
};

TEST_F(ValueEntryBefore7, CutAndCopyReachTheDeskScrap)
{
    user.key("c", cmdKey);
    user.then([&] {
        EXPECT_EQ(machine.clipboardText(), "45");
        EXPECT_EQ(field(), "45");
    });
    user.key("x", cmdKey);
    user.then([&] {
        EXPECT_EQ(machine.clipboardText(), "45");
        EXPECT_EQ(field(), "");
    });
    user.key("escape");
    run(kFreqKind);
}

TEST_F(ValueEntryBefore7, PasteIsRefusedWhenTooLongAndSilentWithoutText)
{
    user.key("v", cmdKey);
    user.then([&] {
        EXPECT_EQ(machine.beeps(), 0);
        EXPECT_EQ(field(), "45");
    });
    user.putOnClipboard("1234567890123456");
    user.key("v", cmdKey);
    dismiss();
    user.in(kFreqDialogID);
    user.key("escape");
    run(kFreqKind);
    EXPECT_TRUE(traced(params(message(16162))));
}

TEST_F(ValueEntryBefore7, CopiedTextIsPasted)
{
    user.key("c", cmdKey);
    user.key("right");
    user.key("v", cmdKey);
    user.then([&] { EXPECT_EQ(field(), "4545"); });
    user.key("escape");
    run(kFreqKind);
}

TEST_F(ValueEntryBefore7, OtherCommandKeysBeep)
{
    user.key("q", cmdKey);
    user.then([&] { EXPECT_EQ(machine.beeps(), 1); });
    user.key("escape");
    run(kFreqKind);
}

}  // namespace
