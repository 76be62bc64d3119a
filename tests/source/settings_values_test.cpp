// Typed values and the annotation, entered from the settings dialog.
#include "source/settings_dialog.h"

namespace settings_dialog {
namespace {

class TypedValue : public SettingsDialog {
protected:
    void enter(int item, const std::string &text)
    {
        user.in(kCustomDialogID);
        user.choose(item, "Other...");
        user.in(kFreqDialogID);
        user.type(text);
        user.key("return");
        user.in(kCustomDialogID);
    }
};

TEST_F(TypedValue, ThatAnItemHasSelectsTheItem)
{
    enter(kFreq, "65");
    enter(kAngle, "82.5");
    enter(kFlat, "50");
    make();
    run();
    PrefsRec kept = stored();
    EXPECT_EQ(kept.freqItem, 11);
    EXPECT_EQ(kept.angleItem, 14);
    EXPECT_EQ(kept.flatItem, 11);
    EXPECT_NE(contentsOf(made()).find(pieceBytes(16501) + "65" + pieceBytes(16502)), std::string::npos);
}

TEST_F(TypedValue, ThatNoItemHasKeepsOtherAndIsWritten)
{
    enter(kFreq, "47.5");
    make();
    run();
    PrefsRec kept = stored();
    EXPECT_EQ(kept.freqItem, 21);
    EXPECT_EQ(plain(kept.freqStr), "47.5");
    EXPECT_NE(contentsOf(made()).find(pieceBytes(16501) + "47.5" + pieceBytes(16502)), std::string::npos);
}

TEST_F(TypedValue, CancelledKeepsTheItemAndLeavesTheMarkOnOther)
{
    user.choose(kFreq, "Other...");
    user.in(kFreqDialogID);
    user.type("99");
    user.key("escape");
    user.in(kCustomDialogID);
    user.then([&] {
        EXPECT_EQ(curItem(gFreqPopInfo), 5);
        EXPECT_EQ(gPrefsPtr->freqItem, 5);
        EXPECT_NE(markOf(gFreqPopInfo, 21), 0);
        EXPECT_EQ(plain(gPrefsPtr->freqStr), "45");
    });
    cancel();
    run();
}

TEST_F(TypedValue, IsCutTo15WithItsUnit)
{
    makeRecords();
    const Setting &freq = *SettingWithMenu(kFreqMenu);
    const std::pair<const char *, const char *> texts[] = {{"12345678901", "12345678901 lpi"},
                                                           {"123456789012", "123456789012 lp"},
                                                           {"123456789012345", "123456789012345"}};
    for (auto [own, cut] : texts) {
        toolbox::setPascal(settings.freqStr, own, 15);
        Str255 text;
        OwnValueWithUnit(freq, 15, text);
        EXPECT_EQ(plain(text), cut);
        OwnValueWithUnit(freq, 255, text);
        EXPECT_EQ(plain(text), std::string(own) + " lpi");
    }
    // A damaged record's length.
    settings.freqStr[0] = 40;
    Str255 text;
    OwnValueWithUnit(freq, 15, text);
    EXPECT_EQ(plain(text), "123456789012345");
}

TEST_F(SettingsDialog, ConfirmedAnnotationSelectsItem2)
{
    user.choose(kAnno, "Edit annotation...");
    user.in(kAnnoDialogID);
    user.type("Job 17");
    user.press(1);
    user.in(kCustomDialogID);
    make();
    run();
    PrefsRec kept = stored();
    EXPECT_EQ(kept.annoItem, 2);
    EXPECT_EQ(plain(kept.annoText), "Job 17");
    EXPECT_NE(contentsOf(made()).find(pieceBytes(16510) + "Job 17" + pieceBytes(16511)), std::string::npos);
}

TEST_F(SettingsDialog, CancelledAnnotationGoesBackToThePreviousItem)
{
    user.choose(kAnno, "Edit annotation...");
    user.in(kAnnoDialogID);
    user.type("Job 17");
    user.press(2);
    user.in(kCustomDialogID);
    user.then([&] {
        EXPECT_EQ(gPrefsPtr->annoItem, 1);
        EXPECT_EQ(markOf(gAnnoPopInfo, 3), 0);
        EXPECT_EQ(plain(gPrefsPtr->annoText), text(16131, 5));
    });
    cancel();
    run();
}

TEST_F(SettingsDialog, CancelKeepsTheFontItemButNotTheFontsName)
{
    user.choose(kAnno, "Edit annotation...");
    user.in(kAnnoDialogID);
    user.choose(6, "Courier");
    user.press(1);
    user.in(kCustomDialogID);
    user.then([] { EXPECT_EQ(plain(gFontNameStr), "Courier"); });
    cancel();
    run();
    EXPECT_EQ(plain(gFontNameStr), "Helvetica");
    EXPECT_EQ(stored().annoFontItem, 9);
    user.in(kCustomDialogID);
    user.then([] { EXPECT_EQ(plain(gFontNameStr), "Courier"); });
    cancel();
    run();
}

}  // namespace
}  // namespace settings_dialog
