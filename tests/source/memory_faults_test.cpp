// Whole sessions in which memory runs out: each allocation fails in turn, or the
// heap is too small. Nothing crashes, nothing stays allocated, and the file that is
// replaced is the old one or the new one.
#include "support/plugin_test.h"

#include "support/riders_pieces.h"
#include "support/sanitized.h"

namespace fs = std::filesystem;

namespace {

enum { kMake = 1, kCancel = 2, kFreq = 4, kAngle, kSpot, kFlat, kAnno };

class OutOfMemory : public PluginTest {
protected:
    void SetUp() override
    {
        machine.wantPictures(false);
        fs::create_directory(folder / "out");
        configuration.startFolder = folder / "out";
        PluginTest::SetUp();
        writeFile(made(), kOld);
        user.onSurprise([this](int dialogID) { return respond(dialogID); });
        run(kCommandSettings);   // so that there are settings, with an import
        fs::copy(configuration.preferencesFolder, folder / "kept", fs::copy_options::recursive);
        ASSERT_NE(contentsOf(made()), kOld);
    }

    // The name that the save dialog proposes.
    fs::path made() const { return folder / "out" / "Riders"; }

    // Restores everything to what it is before each session.
    void putBack()
    {
        if (fs::exists(folder / "kept")) {
            fs::remove_all(configuration.preferencesFolder);
            fs::copy(folder / "kept", configuration.preferencesFolder, fs::copy_options::recursive);
        }
        fs::remove_all(folder / "out");
        fs::create_directory(folder / "out");
        writeFile(made(), kOld);
        toolbox::faults::clear();
        restartPlugin();
        user.forgetRest();
        turns_ = doing_ = values_ = annotations_ = files_ = 0;
    }

    void run(int command)
    {
        call(kSelectCommand, command);
        user.forgetRest();
    }

    // A user who tries everything in turn, and responds to each dialog that comes up.
    bool respond(int dialogID)
    {
        if (++turns_ > 100)
            return false;
        user.forgetRest();
        user.in(dialogID);
        switch (dialogID) {
        case 16300: doNext(); break;
        case 16301: enterValue(); break;
        case 16302: user.key(annotations_++ == 0 ? "return" : "escape"); break;
        case 16400:
        case 16401: user.key("down"); [[fallthrough]];
        case 16399: user.key(files_++ < 4 ? "return" : "escape"); break;
        default: user.press(1);
        }
        return true;
    }

    void doNext()
    {
        switch (doing_++) {
        case 0: user.choose(kFreq, "Other..."); break;
        case 1: user.choose(kAngle, "Other..."); break;
        case 2: user.choose(kSpot, "Import..."); break;
        case 3: user.choose(kSpot, 4); break;
        case 4: user.choose(kSpot, "Import..."); break;
        case 5:
        case 6: user.choose(kAnno, 3); break;
        case 7: user.press(kMake); break;
        default: user.press(kCancel);
        }
    }

    void enterValue()
    {
        user.type("77");
        user.key(values_++ == 0 ? "return" : "escape");
    }

    // The new one differs from the usual if settings or import could not be read.
    void expectOldOrWhole()
    {
        std::string now = contentsOf(made());
        std::string setup = pieceBytes(16600);
        bool whole = now.starts_with(pieceBytes(16499)) && now.ends_with(setup);
        EXPECT_TRUE(now == kOld || whole) << now.size() << " bytes";
    }

    // Runs the command with each allocation failing in turn.
    void failEach(int command, bool onward, int step = 1)
    {
        for (int nth = 1; nth < 20000; nth += step) {
            SCOPED_TRACE("allocation " + std::to_string(nth) + (onward ? " onward" : ""));
            putBack();
            toolbox::faults::failAllocation(nth, onward);
            run(command);
            bool met = toolbox::faults::met();
            toolbox::faults::clear();
            if (command == kCommandSettings)
                expectOldOrWhole();
            if (!met || HasFailure())
                return;
        }
        FAIL() << "there is no end to it";
    }

    // Can be removed and imported too.
    static constexpr const char *kOld = "%!Zu3_Riders %!KT1_Spot\r{ pop }";

private:
    int turns_ = 0, doing_ = 0, values_ = 0, annotations_ = 0, files_ = 0;
};

TEST_F(OutOfMemory, OnceInTheSettingsDialog)
{
    failEach(kCommandSettings, false, triesLess() ? 13 : 1);
}
TEST_F(OutOfMemory, ForGoodInTheSettingsDialog)
{
    failEach(kCommandSettings, true, triesLess() ? 19 : 7);
}
TEST_F(OutOfMemory, InRemoving)
{
    failEach(kCommandRemove, false);
    failEach(kCommandRemove, true);
}

TEST_F(OutOfMemory, HeapsTooSmallForTheDialogs)
{
    for (int kilobytes = 8; kilobytes <= 256; kilobytes += (kilobytes < 64 ? 2 : 32) * (triesLess() ? 3 : 1)) {
        SCOPED_TRACE(std::to_string(kilobytes) + " KB");
        configuration.heapBytes = kilobytes * 1024;
        putBack();
        run(kCommandSettings);
        expectOldOrWhole();
        putBack();
        run(kCommandRemove);
    }
}

}  // namespace
