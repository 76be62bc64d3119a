// The annotation dialog opens, stores what is chosen and typed, and closes.
#include "source/annotation_dialog.h"

namespace annotation_dialog {
namespace {

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
}  // namespace annotation_dialog
