#include "support/plugin_test.h"

#include "source/errors.h"
#include "source/ktAboutDlg.h"
#include "source/ktColor.h"
#include "source/ktSpot.h"
#include "toolbox/memory.h"
#include "source/utilities.h"

namespace fs = std::filesystem;

namespace {

class Entry : public PluginTest {
protected:
    // Fails every allocation from now on; whether any was attempted.
    bool allocates(int selector)
    {
        toolbox::faults::clear();
        toolbox::faults::failAllocation(1, true);
        call(selector);
        bool met = toolbox::faults::met();
        toolbox::faults::clear();
        return met;
    }
};

TEST_F(Entry, IdentifiesTheInterfaceAndAllocatesNothing)
{
    EXPECT_EQ(call(kSelectIdentify), 0x05000001);
    EXPECT_FALSE(allocates(kSelectIdentify));
}

TEST_F(Entry, OtherSelectorsDoNothing)
{
    for (int selector : {3, 5, 100, -1, -32768, 32767}) {
        gHaveWriteError = true;
        EXPECT_FALSE(allocates(selector)) << selector;
        EXPECT_EQ(call(selector), 0) << selector;
        EXPECT_FALSE(gHaveWriteError) << "cleared first, selector " << selector;
    }
    EXPECT_FALSE(fs::exists(preferencesFile()));
}

TEST_F(Entry, RegistersTheTwoCommands)
{
    EXPECT_EQ(call(kSelectStartUp), 0);
    ASSERT_EQ(registered.size(), 2u);
    for (int32_t i = 0; i < 2; ++i) {
        EXPECT_EQ(registered[static_cast<size_t>(i)].group, text(16500, 1));
        EXPECT_EQ(registered[static_cast<size_t>(i)].text, text(16500, static_cast<int16_t>(2 + i)));
        EXPECT_EQ(registered[static_cast<size_t>(i)].number, i);
    }
    EXPECT_FALSE(fs::exists(preferencesFile())) << "settings are neither read nor written";
}

TEST_F(Entry, MissingSecondCommandLeavesTheFirstRegistered)
{
    replaceResource('STR#', 16500, std::string("\0\2\2Go\4Make", 10));
    dismiss();
    EXPECT_EQ(call(kSelectStartUp), 1);
    ASSERT_EQ(registered.size(), 1u);
    EXPECT_EQ(registered[0].group, "Go");
    EXPECT_EQ(registered[0].text, "Make");
    EXPECT_EQ(registered[0].number, 0);
    EXPECT_TRUE(traced(params(message(16129), "\r\rID = 90", " (STR# resource)")));
    EXPECT_FALSE(ended);
}

TEST_F(Entry, MissingNamesRegisterNothing)
{
    for (const std::string &list : {std::string("\0\1\2Go", 5), std::string("\0\3\0\4Make\4Gone", 13),
                                    std::string("\0\3\2Go\0\4Gone", 11)}) {
        registered.clear();
        replaceResource('STR#', 16500, list);
        dismiss();
        EXPECT_EQ(call(kSelectStartUp), 1);
        EXPECT_TRUE(registered.empty());
    }
    removeResource('STR#', 16500);
    dismiss();
    EXPECT_EQ(call(kSelectStartUp), 1);
}

TEST_F(Entry, ReportWhileRegisteringDoesNotReadOldSettings)
{
    // A call with settings first, so that there is something stale to read.
    call(kSelectCommand, 2);
    removeResource('STR#', 16500);
    dismiss();
    EXPECT_EQ(call(kSelectStartUp), 1);
}

TEST_F(Entry, AboutShowsItsBoxAndSavesTheSettings)
{
    user.in(16200);
    user.key("return");
    EXPECT_EQ(call(kSelectAbout), 0);
    EXPECT_EQ(tracedTimes("dialog 16200 shown"), 1);
    EXPECT_TRUE(fs::exists(preferencesFile()));
}

TEST_F(Entry, UnknownCommandsRewriteTheSettingsAndShowNothing)
{
    for (int command : {2, -1, 256, 32767}) {
        fs::remove_all(configuration.preferencesFolder);
        trace.clear();
        EXPECT_EQ(call(kSelectCommand, command), 0);
        EXPECT_FALSE(traced(" shown"));
        EXPECT_TRUE(fs::exists(preferencesFile()));
    }
}

TEST_F(Entry, ImportedSpotTextSurvivesTheSettingsDialog)
{
    call(kSelectCommand, 2);
    // The record is stored in the fork byte for byte; the flag of an import is set.
    fs::path fork = preferencesFile().parent_path() / ("._" + preferencesFile().filename().string());
    std::string file = contentsOf(fork);
    size_t record = file.find(static_cast<char>(7 + kPluginVersion.size()) + ("Riders " + kPluginVersion));
    ASSERT_NE(record, std::string::npos);
    file[record + 49] = 1;
    writeFile(fork, file);
    for (const char *key : {"escape", "return"}) {
        writeFile(preferencesFile(), "{ 2 copy }");
        user.in(16300);
        user.key(key);
        if (*key == 'r') {
            user.in(0);
            user.cancelFile();
        }
        trace.clear();
        EXPECT_EQ(runCommand(kCommandSettings), 0);
        EXPECT_TRUE(traced("dialog 16300 closed"));
        EXPECT_EQ(contentsOf(preferencesFile()), "{ 2 copy }") << key;
        EXPECT_EQ(contentsOf(fork)[record + 49], 1) << key;
    }
}

TEST_F(Entry, ColourTablesAreOnlyLoadedWithColourQuickDraw)
{
    removeResource('dctb', 18001);
    configuration.quickDrawVersion = 0x0FF;
    restartPlugin();
    EXPECT_EQ(call(kSelectCommand, 2), 0);
    EXPECT_FALSE(ended);
    configuration.quickDrawVersion = 0x100;
    restartPlugin();
    dismiss();
    call(kSelectCommand, 2);
    EXPECT_TRUE(ended);
    EXPECT_TRUE(traced(params(message(16129), "\r\rID = 87", " (dctb resource)")));
}

TEST_F(Entry, GlobalsPointToNothingAfterACall)
{
    const std::pair<int, int> calls[] = {{kSelectStartUp, 0},
                                         {kSelectAbout, 0},
                                         {kSelectCommand, kCommandSettings},
                                         {kSelectCommand, kCommandRemove},
                                         {kSelectCommand, 2}};
    user.onSurprise([this](int dialogID) {
        user.key(dialogID == kAboutDialogID ? "return" : "escape");
        return true;
    });
    for (auto [selector, command] : calls) {
        call(selector, command);
        EXPECT_EQ(gEnvirInfo, nullptr);
        EXPECT_EQ(gPrefsPtr, nullptr);
        EXPECT_EQ(gSavedPrefs, nullptr);
        EXPECT_EQ(gSpotHandle, nullptr);
        EXPECT_EQ(gSavedSpotHandle, nullptr);
    }
}

// Whichever allocation fails, once or from then on: the call returns and nothing
// stays allocated (call() checks), or the process ends.
TEST_F(Entry, AnyAllocationMayFail)
{
    for (bool onward : {false, true}) {
        for (int nth = 1;; ++nth) {
            restartPlugin();
            user.forgetRest();
            for (int i = 0; i < 4; ++i)
                user.press(1);   // on any report
            toolbox::faults::failAllocation(nth, onward);
            call(kSelectCommand, 2);
            bool met = toolbox::faults::met();
            toolbox::faults::clear();
            if (!met)
                break;
            ASSERT_LT(nth, 1000);
        }
    }
    user.forgetRest();
}

TEST_F(Entry, StartUpWithoutMemoryForItsRecordRegistersNothing)
{
    toolbox::faults::failAllocation(1);
    dismiss();
    EXPECT_EQ(call(kSelectStartUp), 1);
    EXPECT_TRUE(traced(" (newptr)"));
    EXPECT_TRUE(registered.empty());
    EXPECT_FALSE(ended);
}

TEST_F(Entry, WithoutMemoryForTheRecordsTheReportIsStillInItsPlace)
{
    for (int selector : {kSelectStartUp, kSelectAbout, kSelectCommand}) {
        restartPlugin();
        dismiss();
        toolbox::faults::failAllocation(1);
        call(selector);
        toolbox::faults::clear();
        EXPECT_TRUE(traced(params(message(16129), "\r\rID = 94", " (newptr)"))) << selector;
        EXPECT_TRUE(traced("dialog 16129 shown at 110,105")) << selector;
    }
}

TEST_F(Entry, WithoutColourQuickDrawTheTablesAreNeitherLoadedNorReleased)
{
    configuration.quickDrawVersion = 0;
    restartPlugin();
    static char nothing = 0;
    static Ptr master = &nothing;
    Handle others = &master;
    for (Handle *table : {&gCDlogColor, &gDlogColor, &gCCntlColor, &gCntlColor})
        *table = others;
    call(kSelectCommand, 2);
    for (Handle *table : {&gCDlogColor, &gDlogColor, &gCCntlColor, &gCntlColor}) {
        EXPECT_EQ(*table, others);
        *table = nullptr;
    }
}

}  // namespace
