// Imported spot functions in the settings dialog: kept, replaced, restored.
#include "source/settings_dialog.h"

namespace settings_dialog {
namespace {

TEST_F(SettingsDialog, ImportIsStoredAndMade)
{
    writeSpotFile("Stars", "{ my spot }");
    importSpot("Stars");
    make();
    run();
    PrefsRec kept = stored();
    EXPECT_EQ(kept.spotItem, kImport);
    EXPECT_EQ(kept.spotImported, 1);
    EXPECT_EQ(plain(kept.spotName), "Stars");
    EXPECT_EQ(spotText, "{ my spot }");
    EXPECT_NE(contentsOf(made()).find(pieceBytes(16506) + "{ my spot }" + pieceBytes(16507)), std::string::npos);
}

TEST_F(SettingsDialog, RefusedImportGoesBackToThePreviousItem)
{
    user.choose(kSpot, "Cross");
    user.choose(kSpot, "Import...");
    dismiss(16132, 5);
    user.in(kCustomDialogID);
    user.then([&] {
        EXPECT_EQ(curItem(gSpotPopInfo), 8);
        EXPECT_EQ(gPrefsPtr->spotItem, 8);
        EXPECT_EQ(markOf(gSpotPopInfo, kImport), 0);
    });
    cancel();
    run();
    EXPECT_TRUE(traced(params(message(16146))));
    EXPECT_FALSE(traced("dialog 16401"));
}

TEST_F(SettingsDialog, CancelledImportGoesBackToThePreviousItem)
{
    user.choose(kSpot, "Import...");
    dismiss(16132);
    user.cancelFile();
    user.in(kCustomDialogID);
    user.then([&] { EXPECT_EQ(gPrefsPtr->spotItem, 1); });
    cancel();
    run();
}

TEST_F(SettingsDialog, CancelAfterAFreshImportForgetsIt)
{
    writeSpotFile("Stars", "{ my spot }");
    importSpot("Stars");
    cancel();
    run();
    PrefsRec kept = stored();
    EXPECT_EQ(kept.spotImported, 0);
    EXPECT_EQ(kept.spotItem, 1);
}

TEST_F(SettingsDialog, RevertingAFreshImportLeavesNoneImported)
{
    writeSpotFile("Stars", "{ my spot }");
    importSpot("Stars");
    user.then([] {
        EXPECT_EQ(gPrefsPtr->spotImported, 1);
        DoCustomRevert();
        EXPECT_EQ(gPrefsPtr->spotImported, 0);
        EXPECT_EQ(gPrefsPtr->spotItem, 1);
        EXPECT_EQ(gSpotHandle, nullptr);
    });
    cancel();
    run();
}

TEST_F(SettingsDialog, RevertingABuiltInBringsTheImportBackWithItsNameAndLength)
{
    store([](PrefsRec &) {}, "{ earlier }");
    std::string longest(63, 'n');
    user.then([&] {
        toolbox::setPascal(gPrefsPtr->spotName, longest, 63);
        SaveCustomSettings();
    });
    user.choose(kSpot, "Round");
    user.then([&] {
        toolbox::setPascal(gPrefsPtr->spotName, "overwritten", 63);
        gSpotLength = 1;
        DoCustomRevert();
        EXPECT_EQ(gPrefsPtr->spotImported, 1);
        EXPECT_EQ(plain(gPrefsPtr->spotName), longest);
        EXPECT_EQ(gSpotLength, 11);
    });
    cancel();
    run();
}

TEST_F(SettingsDialog, BuiltInAfterAFreshImportForgetsIt)
{
    writeSpotFile("Stars", "{ my spot }");
    importSpot("Stars");
    user.choose(kSpot, "Round");
    user.then([] {
        EXPECT_EQ(gSpotHandle, nullptr);
        EXPECT_EQ(gPrefsPtr->spotImported, 0);
    });
    make();
    run();
    EXPECT_EQ(stored().spotImported, 0);
}

TEST_F(SettingsDialog, CancelBringsAnEarlierImportBackAfterABuiltIn)
{
    store([](PrefsRec &) {}, "{ earlier }");
    user.choose(kSpot, "Round");
    user.then([] {
        EXPECT_NE(gSpotHandle, nullptr);
        EXPECT_EQ(gSpotHandle, gSavedSpotHandle);
        EXPECT_EQ(gPrefsPtr->spotImported, 0);
    });
    cancel();
    run();
    PrefsRec kept = stored();
    EXPECT_EQ(kept.spotImported, 1);
    EXPECT_EQ(plain(kept.spotName), "Old spot");
    EXPECT_EQ(spotText, "{ earlier }");
}

TEST_F(SettingsDialog, CancelBringsAnEarlierImportBackAfterAnotherImport)
{
    store([](PrefsRec &) {}, "{ earlier }");
    writeSpotFile("Stars", "{ my spot }");
    importSpot("Stars");
    user.key("escape");
    run();
    PrefsRec kept = stored();
    EXPECT_EQ(plain(kept.spotName), "Old spot");
    EXPECT_EQ(spotText, "{ earlier }");
}

TEST_F(SettingsDialog, NewImportReplacesAnEarlierOne)
{
    store([](PrefsRec &) {}, "{ earlier }");
    writeSpotFile("Stars", "{ my spot }");
    importSpot("Stars");
    make();
    run();
    EXPECT_EQ(plain(stored().spotName), "Stars");
    EXPECT_EQ(spotText, "{ my spot }");
}

TEST_F(SettingsDialog, SharedSpotBufferIsReleasedOnce)
{
    // If it were freed twice memWZErr would be reported; the leak check finds the rest.
    store([](PrefsRec &) {}, "{ earlier }");
    user.choose(kSpot, "Round");
    make();
    run();
    EXPECT_EQ(stored().spotImported, 0);
    EXPECT_EQ(spotText, "");
}

TEST_F(SettingsDialog, EarlierImportStaysInUse)
{
    store([](PrefsRec &) {}, "{ earlier }");
    make();
    run();
    EXPECT_NE(contentsOf(made()).find("{ earlier }"), std::string::npos);
    stored();
    EXPECT_EQ(spotText, "{ earlier }");
}

TEST_F(SettingsDialog, ImportAfterABuiltInKeepsTheEarlierOneForCancelling)
{
    store([](PrefsRec &) {}, "{ earlier }");
    writeSpotFile("Stars", "{ my spot }");
    user.choose(kSpot, "Round");
    importSpot("Stars");
    cancel();
    run();
    stored();
    EXPECT_EQ(spotText, "{ earlier }");
}

}  // namespace
}  // namespace settings_dialog
