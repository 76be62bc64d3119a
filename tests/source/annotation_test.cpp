#include "source/open_settings.h"

#include "source/initUtilities.h"
#include "source/ktAnnoDlg.h"
#include "source/ktCustomDlg.h"
#include "source/ktFreqDlg.h"
#include "source/popup.h"

namespace {

enum { kText = 4, kFont = 6, kSizes = 7, kSize = 8 };

class SizeCheck : public PluginTest {
protected:
    void SetUp() override
    {
        PluginTest::SetUp();
        makeRecords();
    }
    bool passes(const std::string &text)
    {
        P copy(text);
        bool passed = DoSizeStrCheck(copy, false);
        EXPECT_EQ(plain(copy), text);
        EXPECT_FALSE(traced("dialog"));
        return passed;
    }
};

TEST_F(SizeCheck, IsAWholeNumberFrom4To30)
{
    for (const char *text : {"4", "30", "12", "0012"})
        EXPECT_TRUE(passes(text)) << text;
    for (const char *text : {"", "3", "31", "12.0", "12.5", "1a", "1.2.3", "-9"})
        EXPECT_FALSE(passes(text)) << text;
}

class Annotation : public OpenSettings {
protected:
    void SetUp() override
    {
        OpenSettings::SetUp();
        prepare();
    }

    void reopenBefore7()
    {
        configuration.systemVersion = 0x0605;
        reopen();
        prepare();
    }

    void prepare()
    {
        ShowWindow(gCustomDialog);
        SelectWindow(gCustomDialog);
        toolbox::setPascal(settings.annoText, "before", 255);
        toolbox::setPascal(settings.annoSizeStr, "9", 15);
        user.in(kAnnoDialogID);
    }

    bool run()
    {
        Boolean confirmed = false;
        guarded([&] { confirmed = HandleAnnoDialog(); });
        EXPECT_TRUE(user.idle());
        return confirmed;
    }

    std::string field(int16_t number)
    {
        int16_t type;
        Handle item;
        Rect box;
        Str255 text;
        GetDItem(gTheDialog, number, &type, &item, &box);
        GetIText(item, text);
        return plain(text);
    }

    int currentField() { return reinterpret_cast<DialogPeek>(gTheDialog)->editField + 1; }

    void fill(int16_t number, const std::string &text)
    {
        user.then([=] {
            int16_t type;
            Handle item;
            Rect box;
            GetDItem(gTheDialog, number, &type, &item, &box);
            SetIText(item, P(text));
        });
    }

    void fillText(const std::string &text) { fill(kText, text); }

    void typeSize(const std::string &text)
    {
        user.key("tab");
        user.key("backspace");
        user.type(text);
    }

    void paste(const std::string &text)
    {
        user.putOnClipboard(text);
        user.key("v", cmdKey);
    }

    void expectRefused(int16_t messageID, const std::function<void()> &look)
    {
        user.key("return");
        dismiss();
        user.in(kAnnoDialogID);
        user.then(look);
        user.key("escape");
        EXPECT_FALSE(run());
        EXPECT_TRUE(traced(params(message(messageID))));
    }
};

TEST_F(Annotation, OpensWithTextSelectedAndSizeAndFontShown)
{
    settings.annoFontItem = 9;
    user.then([&] {
        EXPECT_EQ(field(kText), "before");
        EXPECT_EQ(field(kSize), "9");
        EXPECT_EQ(currentField(), kText);
        EXPECT_EQ(PopupRecord(gAnnoFontPopInfo)->curItem, 9);
        EXPECT_EQ(PopupRecord(gAnnoSizePopInfo)->curItem, 0);
        EXPECT_EQ(plain(PopupRecord(gAnnoFontPopInfo)->title), text(16128, 4));
        EXPECT_EQ(plain(gFontNameStr), "Courier");
    });
    user.key("escape");
    EXPECT_FALSE(run());
    EXPECT_EQ(gTheDialog, nullptr);
}

TEST_F(Annotation, OpensInTheMiddleOfTheSettingsDialog)
{
    MoveWindow(gCustomDialog, 60, 70, false);  // 392 by 252
    user.key("escape");
    run();
    EXPECT_TRUE(traced("dialog 16302 shown at 36,98 440x196"));
}

TEST_F(Annotation, ConfirmedEntriesAreStored)
{
    user.type("Job 17 für Æsop");
    typeSize("14");
    user.key("return");
    EXPECT_TRUE(run());
    EXPECT_EQ(toolbox::utf8FromPascal(settings.annoText), "Job 17 für Æsop");
    EXPECT_EQ(plain(settings.annoSizeStr), "14");
}

TEST_F(Annotation, CancelRestoresEverything)
{
    settings.annoFontItem = 5;
    user.choose(kFont, "Symbol");
    user.choose(kSizes, "24");
    user.then([&] {
        EXPECT_EQ(settings.annoFontItem, 13);
        EXPECT_EQ(plain(gFontNameStr), "Symbol");
        EXPECT_EQ(plain(settings.annoSizeStr), "24");
    });
    user.press(2);
    EXPECT_FALSE(run());
    EXPECT_EQ(settings.annoFontItem, 5);
    EXPECT_EQ(plain(gFontNameStr), "Helvetica");
    EXPECT_EQ(plain(settings.annoSizeStr), "9");
    EXPECT_EQ(plain(settings.annoText), "before");
}

TEST_F(Annotation, CancelRestoresTextsOfFullLength)
{
    const std::string text(255, 'x'), size = "000000000000012";
    toolbox::setPascal(settings.annoText, text, 255);
    toolbox::setPascal(settings.annoSizeStr, size, 15);
    user.choose(kSizes, "24");
    user.then([&] { toolbox::setPascal(settings.annoText, "another", 255); });
    user.press(2);
    EXPECT_FALSE(run());
    EXPECT_EQ(plain(settings.annoText), text);
    EXPECT_EQ(plain(settings.annoSizeStr), size);
}

// Only a damaged record has one. The text that is kept next to it is not written over.
TEST_F(Annotation, SizeLongerThanItsFieldIsCutOnOpening)
{
    const std::string size = "000000000000012";
    for (unsigned char length : {16, 40}) {
        toolbox::setPascal(settings.annoSizeStr, size, 15);
        settings.annoSizeStr[0] = length;
        user.in(kAnnoDialogID);
        user.press(2);
        EXPECT_FALSE(run());
        EXPECT_EQ(plain(settings.annoSizeStr), size);
        EXPECT_EQ(plain(settings.annoText), "before");
    }
}

TEST_F(Annotation, ChosenFontIsStoredWithoutTrailingSpaces)
{
    user.choose(kFont, "Times-Roman");
    user.press(1);
    EXPECT_TRUE(run());
    EXPECT_EQ(settings.annoFontItem, 1);
    EXPECT_EQ(plain(gFontNameStr), "Times-Roman");
}

TEST_F(Annotation, FontsNameIsFetchedAsItStandsOnOpening)
{
    settings.annoFontItem = 1;
    user.press(1);
    EXPECT_TRUE(run());
    EXPECT_EQ(plain(gFontNameStr).substr(0, 13), "Times-Roman  ");
}

TEST_F(Annotation, FontsNameIsKeptAndPutBackUpTo63Characters)
{
    for (size_t length : {63u, 64u}) {
        // As long as the menu is loaded it stays as it is changed.
        MenuHandle fonts = GetMenu(kAnnoFontMenu);
        SetItem(fonts, 5, P(std::string(length, 'F')));
        settings.annoFontItem = 5;
        user.in(kAnnoDialogID);
        user.then([] { EXPECT_EQ(gAnnoSavedFontNameStr[0], 63); });
        user.choose(kFont, "Symbol");
        user.press(2);
        EXPECT_FALSE(run());
        EXPECT_EQ(plain(gFontNameStr), std::string(63, 'F'));
    }
}

TEST_F(Annotation, FontPopupLeftWithoutAChoiceStillSetsTheFont)
{
    // Opening leaves the first font its added spaces.
    settings.annoFontItem = 1;
    user.then([&] {
        EXPECT_NE(plain(gFontNameStr), "Times-Roman");
        toolbox::setPascal(gFontNameStr, "another");
        settings.annoFontItem = 6;
    });
    user.chooseNothing(kFont);
    user.then([&] {
        EXPECT_EQ(plain(gFontNameStr), "Times-Roman");
        EXPECT_EQ(settings.annoFontItem, 1);
    });
    user.press(1);
    EXPECT_TRUE(run());
    EXPECT_EQ(plain(gFontNameStr), "Times-Roman");
    EXPECT_EQ(settings.annoFontItem, 1);
}

TEST_F(Annotation, SizePopupReplacesTheTypedSizeAtOnce)
{
    typeSize("11");
    user.choose(kSizes, "18");
    user.then([&] {
        EXPECT_EQ(field(kSize), "18");
        EXPECT_EQ(plain(settings.annoSizeStr), "18");
        EXPECT_EQ(currentField(), kSize);
    });
    user.key("return");
    EXPECT_TRUE(run());
    EXPECT_EQ(plain(settings.annoSizeStr), "18");
}

TEST_F(Annotation, TypedSizeOfAnItemIsTickedWhenThePopupOpens)
{
    typeSize("12");
    user.chooseNothing(kSizes);
    user.then([&] {
        MenuHandle menu = PopupRecord(gAnnoSizePopInfo)->menu;
        int16_t mark = 0;
        GetItemMark(menu, 6, &mark);
        EXPECT_NE(mark, 0);
        EXPECT_EQ(PopupRecord(gAnnoSizePopInfo)->curItem, 6);
    });
    user.press(2);
    run();
    EXPECT_TRUE(traced("popup 16135 opened at item 6"));
}

TEST_F(Annotation, TypedSizeOfNoItemTicksNothing)
{
    user.choose(kSizes, "12");
    user.key("backspace");
    user.type("11");
    user.chooseNothing(kSizes);
    user.then([&] {
        int16_t mark = 0;
        GetItemMark(PopupRecord(gAnnoSizePopInfo)->menu, 6, &mark);
        EXPECT_EQ(mark, 0);
        EXPECT_EQ(PopupRecord(gAnnoSizePopInfo)->curItem, 0);
        EXPECT_EQ(field(kSize), "11");
    });
    user.press(2);
    run();
}

TEST_F(Annotation, FirstSizeIsNotPadded)
{
    user.choose(kSizes, 1);
    user.key("return");
    EXPECT_TRUE(run());
    EXPECT_EQ(plain(settings.annoSizeStr), "6");
}

TEST_F(Annotation, EverySizeOfTheMenuPassesTheCheck)
{
    user.then([&] {
        MenuHandle menu = PopupRecord(gAnnoSizePopInfo)->menu;
        for (int16_t item = 1; item <= CountMItems(menu); ++item) {
            Str255 size;
            GetItem(menu, item, size);
            EXPECT_TRUE(DoSizeStrCheck(size, false)) << plain(size);
        }
    });
    user.press(2);
    run();
}

// --- What is refused --------------------------------------------------------

TEST_F(Annotation, EmptyTextIsRefused)
{
    user.key("backspace");
    expectRefused(16145, [&] { EXPECT_EQ(field(kText), "before"); });
}

TEST_F(Annotation, EmptiedTextGoesBackToTheOneFromBeforeTheDialog)
{
    user.type("new text");
    typeSize("99");
    user.key("return");
    dismiss();
    user.in(kAnnoDialogID);
    user.then([&] { EXPECT_EQ(plain(settings.annoText), "new text"); });
    user.key("tab");
    user.key("backspace");
    expectRefused(16145, [&] { EXPECT_EQ(field(kText), "before"); });
}

TEST_F(Annotation, TextOf255IsCutTo254AndRefused)
{
    fillText(std::string(255, 'x'));
    expectRefused(16145, [&] { EXPECT_EQ(field(kText), std::string(254, 'x')); });
}

TEST_F(Annotation, TextOf254Passes)
{
    fillText(std::string(254, 'x'));
    user.press(1);
    EXPECT_TRUE(run());
    EXPECT_EQ(plain(settings.annoText), std::string(254, 'x'));
}

TEST_F(Annotation, SizesOutOfRangeAreCorrected)
{
    typeSize("3");
    expectRefused(16166, [&] { EXPECT_EQ(field(kSize), "4"); });
    user.in(kAnnoDialogID);
    typeSize("31");
    expectRefused(16166, [&] { EXPECT_EQ(field(kSize), "30"); });
    user.in(kAnnoDialogID);
    typeSize("");
    expectRefused(16166, [&] { EXPECT_EQ(field(kSize), "4"); });
}

TEST_F(Annotation, BoundsPassAndLeadingZerosGo)
{
    for (auto [typed, stored] : {std::pair{"4", "4"}, std::pair{"30", "30"}, std::pair{"0012", "12"}}) {
        user.in(kAnnoDialogID);
        typeSize(typed);
        user.key("return");
        EXPECT_TRUE(run());
        EXPECT_EQ(plain(settings.annoSizeStr), stored);
    }
}

// The field takes no more than four by key or by paste; a host can put more into it.
TEST_F(Annotation, SizeIsCutTo15CharactersBeforeItsLeadingZerosGo)
{
    fill(kSize, std::string(13, '0') + "12345");
    user.key("return");
    EXPECT_TRUE(run());
    EXPECT_EQ(plain(settings.annoSizeStr), "12");
}

TEST_F(Annotation, SizeWithASeparatorIsRefusedThoughItsZerosCouldGo)
{
    user.key("tab");
    user.key("backspace");
    paste("12.0");
    expectRefused(16165, [&] { EXPECT_EQ(field(kSize), "9"); });
}

TEST_F(Annotation, SizePopupsChoiceIsWhatAWrongSizeGoesBackTo)
{
    for (auto [pasted, words] : {std::pair{"1a", 16132}, std::pair{"12.0", 16165}}) {
        SCOPED_TRACE(pasted);
        user.in(kAnnoDialogID);
        user.choose(kSizes, "24");
        user.key("backspace");
        paste(pasted);
        expectRefused(static_cast<int16_t>(words), [&] { EXPECT_EQ(field(kSize), "24"); });
        EXPECT_EQ(plain(settings.annoSizeStr), "9");
    }
}

TEST_F(Annotation, TextIsStoredThoughTheSizeIsRefused)
{
    user.type("new text");
    typeSize("99");
    expectRefused(16166, [&] { EXPECT_EQ(plain(settings.annoText), "new text"); });
    EXPECT_EQ(plain(settings.annoText), "before");
}

// --- Keys -------------------------------------------------------------------

TEST_F(Annotation, SizeTakesFourDigitsOnly)
{
    typeSize("12.a");
    user.then([&] {
        EXPECT_EQ(field(kSize), "12");
        EXPECT_EQ(machine.beeps(), 2);
    });
    user.type("345");
    user.then([&] {
        EXPECT_EQ(field(kSize), "1234");
        EXPECT_EQ(machine.beeps(), 3);
    });
    user.press(2);
    run();
}

TEST_F(Annotation, TextTakes254Characters)
{
    fillText(std::string(253, 'x'));
    user.then([] { SelIText(gTheDialog, kText, 253, 253); });
    user.type("ab");
    user.then([&] {
        EXPECT_EQ(field(kText), std::string(253, 'x') + "a");
        EXPECT_EQ(machine.beeps(), 1);
    });
    user.press(2);
    run();
}

TEST_F(Annotation, TabMovesBetweenTheFields)
{
    user.key("tab");
    user.then([&] { EXPECT_EQ(currentField(), kSize); });
    user.key("tab");
    user.then([&] { EXPECT_EQ(currentField(), kText); });
    user.press(2);
    run();
    EXPECT_EQ(machine.beeps(), 0);
}

TEST_F(Annotation, HeldKeysNeedRoom)
{
    auto repeated = [](int key, int modifiers = 0) {
        EventRecord event{};
        event.what = autoKey;
        event.message = key;
        event.modifiers = modifiers;
        int16_t itemHit = 0;
        return AnnoFilter(gTheDialog, &event, &itemHit) != 0;
    };
    user.then([&] {
        EXPECT_FALSE(repeated('x'));
        EXPECT_FALSE(repeated(8));
    });
    fillText(std::string(254, 'x'));
    user.then([] { SelIText(gTheDialog, kText, 254, 254); });
    user.then([&] {
        EXPECT_TRUE(repeated('x'));
        EXPECT_TRUE(repeated(8));
    });
    user.key("tab");
    user.then([&] {
        EXPECT_FALSE(repeated('1'));
        EXPECT_FALSE(repeated(8));
        EXPECT_FALSE(repeated(9));
        EXPECT_FALSE(repeated(28));
        EXPECT_TRUE(repeated('.'));
        EXPECT_TRUE(repeated(13));
    });
    user.press(2);
    run();
}

TEST_F(Annotation, ReturnAndEnterConfirm)
{
    for (const char *key : {"return", "enter"}) {
        user.in(kAnnoDialogID);
        user.type(key);
        user.key(key);
        EXPECT_TRUE(run());
        EXPECT_EQ(plain(settings.annoText), key);
    }
    EXPECT_EQ(tracedTimes("flash \"OK\""), 2);
}

TEST_F(Annotation, EscapeAndCommandPeriodCancel)
{
    for (auto [key, modifiers] : {std::pair{"escape", 0}, std::pair{".", static_cast<int>(cmdKey)}}) {
        user.in(kAnnoDialogID);
        user.type("something else");
        user.key(key, static_cast<uint16_t>(modifiers));
        EXPECT_FALSE(run());
        EXPECT_EQ(plain(settings.annoText), "before");
    }
    EXPECT_EQ(tracedTimes("flash \"Cancel\""), 2);
}

TEST_F(Annotation, PeriodAloneIsTyped)
{
    user.type(".");
    user.key("enter");
    EXPECT_TRUE(run());
    EXPECT_EQ(plain(settings.annoText), ".");
}

TEST_F(Annotation, PasteTooLongIsRefusedInTheFieldsOwnWords)
{
    paste(std::string(255, 'x'));
    dismiss();
    user.in(kAnnoDialogID);
    user.then([&] { EXPECT_EQ(field(kText), "before"); });
    user.key("tab");
    paste("12345");
    dismiss();
    user.in(kAnnoDialogID);
    user.then([&] { EXPECT_EQ(field(kSize), "9"); });
    user.press(2);
    run();
    EXPECT_EQ(tracedTimes(params(message(16163))), 1);
    EXPECT_EQ(tracedTimes(params(message(16167))), 1);
}

TEST_F(Annotation, PasteThatJustFillsTheFieldIsTaken)
{
    paste(std::string(254, 'x'));
    user.then([&] { EXPECT_EQ(field(kText), std::string(254, 'x')); });
    user.key("tab");
    paste("1234");
    user.then([&] { EXPECT_EQ(field(kSize), "1234"); });
    user.press(2);
    run();
}

TEST_F(Annotation, PasteIsMeasuredWithWhatStaysInTheField)
{
    typeSize("123");
    paste("45");
    dismiss();
    user.in(kAnnoDialogID);
    user.then([&] { EXPECT_EQ(field(kSize), "123"); });
    user.key("backspace");
    paste("45");
    user.then([&] { EXPECT_EQ(field(kSize), "1245"); });
    fillText(std::string(252, 'x'));
    user.key("tab");
    user.key("right");
    paste("abcd");
    dismiss();
    user.in(kAnnoDialogID);
    paste("ab");
    user.then([&] { EXPECT_EQ(field(kText), std::string(252, 'x') + "ab"); });
    user.press(2);
    run();
    EXPECT_EQ(tracedTimes(params(message(16163))), 1);
    EXPECT_EQ(tracedTimes(params(message(16167))), 1);
}

TEST_F(Annotation, PasteThatFitsReplacesTheSelection)
{
    paste("from elsewhere");
    user.press(1);
    EXPECT_TRUE(run());
    EXPECT_EQ(plain(settings.annoText), "from elsewhere");
}

TEST_F(Annotation, Before7CommandKeysAreDoneHere)
{
    reopenBefore7();
    user.key("x", cmdKey);
    user.then([&] {
        EXPECT_EQ(machine.clipboardText(), "before");
        EXPECT_EQ(field(kText), "");
    });
    user.key("v", cmdKey);
    user.key("v", cmdKey);
    user.key("q", cmdKey);
    user.then([&] {
        EXPECT_EQ(field(kText), "beforebefore");
        EXPECT_EQ(machine.beeps(), 1);
    });
    user.key("tab");
    user.key("v", cmdKey);
    dismiss();
    user.in(kAnnoDialogID);
    user.press(2);
    run();
    EXPECT_TRUE(traced(params(message(16167))));
}

TEST_F(Annotation, PortIsAsItWasAfterwardsAndAfterDrawing)
{
    DialogPtr other = GetNewDialog(16133, nullptr, reinterpret_cast<WindowPtr>(-1));
    GrafPtr port = nullptr;
    SetPort(other);
    user.then([&] {
        SetPort(other);
        AnnoProc(gTheDialog, 9);
        GetPort(&port);
        EXPECT_EQ(port, other);
        SetPort(gTheDialog);
    });
    user.key("escape");
    run();
    GetPort(&port);
    EXPECT_EQ(port, other);
    SetPort(gCustomDialog);
    DisposDialog(other);
}

// --- Missing resources ------------------------------------------------------

TEST_F(Annotation, MissingDialogIsFatal)
{
    removeResource('DLOG', 16302);
    dismiss();
    run();
    EXPECT_TRUE(ended);
    EXPECT_TRUE(traced(params(message(16129), "\r\rID = 80", " (dlog resource)")));
}

TEST_F(Annotation, MissingFontTitleIsFatal)
{
    removeResource('STR#', 16128);
    dismiss();
    run();
    EXPECT_TRUE(ended);
    EXPECT_TRUE(traced(params(message(16129), "\r\rID = 90", " (STR# resource)")));
}

TEST_F(Annotation, RestoredRecordIs274Bytes)
{
    EXPECT_EQ(offsetof(AnnoPrefs, fontItem), 0u);
    EXPECT_EQ(offsetof(AnnoPrefs, sizeStr), 2u);
    EXPECT_EQ(offsetof(AnnoPrefs, text), 18u);
    EXPECT_EQ(sizeof(AnnoPrefs), 274u);
}

}  // namespace
