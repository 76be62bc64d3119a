#include "support/plugin_test.h"

#include "source/ktDeleteRiders.h"
#include "source/listed_files.h"
#include "toolbox/files.h"
#include "toolbox/memory.h"

namespace fs = std::filesystem;
using toolbox::FileCall;

namespace {

class Removal : public PluginTest {
protected:
    void SetUp() override
    {
        PluginTest::SetUp();
        makeRecords();
        trace.clear();
    }
    fs::path riders() const { return folder / "My riders"; }
    void put(const std::string &bytes) { writeFile(riders(), bytes); }
    // The user chooses the file; the command's result.
    int16_t remove()
    {
        user.answerOpen(riders());
        return run();
    }
    int16_t run()
    {
        int16_t result = -999;
        guarded([&] { result = RemoveRiders(); });
        EXPECT_EQ(leftBehind().text(), toolbox::LeakReport{}.text());
        return result;
    }
    int16_t removeWithReport()
    {
        user.answerOpen(riders());
        dismiss();
        return run();
    }
    bool there() const { return fs::exists(riders()); }
    void expectReport(int string, const std::string &number, const std::string &context)
    {
        EXPECT_EQ(tracedTimes("dialog 16129 shown"), 1);
        if (number.empty())
            EXPECT_TRUE(traced(params(message(static_cast<int16_t>(string)), context)));
        else
            EXPECT_TRUE(traced(params(message(static_cast<int16_t>(string)), "\r\rID = " + number, context)));
    }
};

const std::string kMagic = "%!Zu3_Riders";

TEST_F(Removal, RidersFileIsDeletedWithoutAQuestion)
{
    put(kMagic + "\r\n% the rest");
    EXPECT_EQ(remove(), 0);
    EXPECT_FALSE(there());
    EXPECT_FALSE(traced("dialog 16129"));
    EXPECT_TRUE(traced("dialog 16400 shown at 146,86 348x221"));
}

TEST_F(Removal, CancelDeletesNothing)
{
    put(kMagic + "\r\n% the rest");
    user.cancelFile();
    EXPECT_EQ(run(), 1);
    EXPECT_TRUE(there());
}

TEST_F(Removal, OnlyTextFilesAreListed)
{
    std::vector<std::string> listed = listedOfTwo(folder.path(), user, [&] { run(); });
    EXPECT_EQ(listed, std::vector<std::string>{"A text"});
}

TEST_F(Removal, ThirteenBytesAreTooFewEvenWithTheMagic)
{
    put(kMagic + "\r");
    removeWithReport();
    expectReport(16159, "", "");
    EXPECT_TRUE(there());
}

TEST_F(Removal, FifteenBytesAreEnough)
{
    put(kMagic + "\rab");
    EXPECT_EQ(remove(), 0);
    EXPECT_FALSE(there());
}

TEST_F(Removal, FourteenBytesAreRefused)
{
    put(kMagic + "\ra");
    removeWithReport();
    EXPECT_TRUE(there());
}

TEST_F(Removal, MagicMayStartUpToOffset3)
{
    for (size_t offset = 0; offset <= 3; ++offset) {
        put(std::string(offset, 'x') + kMagic + "\rabc");
        EXPECT_EQ(remove(), 0) << offset;
        EXPECT_FALSE(there()) << offset;
    }
}

TEST_F(Removal, MagicAtOffset4IsNotSeen)
{
    put("xxxx" + kMagic + "\rabc");
    removeWithReport();
    expectReport(16159, "", "");
    EXPECT_TRUE(there());
}

TEST_F(Removal, OtherFilesAreRefused)
{
    for (const char *bytes : {"%!PS-Adobe-3.0\n%%Title: x", "%!Zu3_riders\r is not it", "%!KT1_Spot\r{ add }   "}) {
        trace.clear();
        put(bytes);
        removeWithReport();
        expectReport(16159, "", "");
        EXPECT_EQ(contentsOf(riders()), bytes);
    }
}

TEST_F(Removal, EmptyFileIsRefused)
{
    put("");
    removeWithReport();
    expectReport(16159, "", "");
    EXPECT_TRUE(there());
}

TEST_F(Removal, FileThatIsOpenElsewhereStays)
{
    put(kMagic + "\r\n% the rest");
    int16_t refNum = 0;
    auto here = toolbox::folders::workingDirectory(folder.path());
    ASSERT_EQ(FSOpen(P("My riders"), *here, &refNum), noErr);
    user.answerOpen(riders());
    dismiss();
    guarded([] { RemoveRiders(); });
    expectReport(16158, "-47", " (fsdelete)");
    EXPECT_TRUE(there());
    FSClose(refNum);
}

TEST_F(Removal, FailingCallsAreReportedAndDeleteNothing)
{
    struct Fault {
        FileCall call;
        OSErr error;
        int string;
        const char *context;
    };
    for (const Fault &fault : {Fault{FileCall::open, -43, 16149, " (fsopen)"},
                               Fault{FileCall::getEOF, -36, 16134, " (eof)"},
                               Fault{FileCall::read, -61, 16150, " (fsread)"},
                               Fault{FileCall::remove, -45, 16156, " (fsdelete)"}}) {
        put(kMagic + "\r\n% the rest");
        trace.clear();
        toolbox::faults::clear();
        toolbox::faults::failFileCall(fault.call, 1, fault.error);
        removeWithReport();
        EXPECT_TRUE(toolbox::faults::met()) << fault.context;
        expectReport(fault.string, std::to_string(fault.error), fault.context);
        EXPECT_TRUE(there()) << fault.context;
    }
}

TEST_F(Removal, HeapThatIsNearlyFullIsReported)
{
    put(kMagic + "\r\n% the rest");
    Handle rest = nullptr;
    user.then([&] { rest = NewHandle(MaxMem(nullptr) - 4000); });
    user.answerOpen(riders());
    dismiss();
    guarded([] { RemoveRiders(); });
    EXPECT_NE(rest, nullptr);
    expectReport(16161, "96", " (maxmem)");
    EXPECT_TRUE(there());
    DisposeHandle(rest);
}

TEST_F(Removal, NoRoomForTheCheckIsReported)
{
    bool seen = false, met = true;
    for (int nth = 1; met && !seen && nth < 1000; ++nth) {
        restartPlugin();
        makeRecords();
        put(kMagic + "\r\n% the rest");
        user.forgetRest();
        user.answerOpen(riders());
        user.press(1);   // on the report
        toolbox::faults::failAllocation(nth);
        // If the file dialog has no memory, the user's steps do not fit what is shown.
        try {
            RemoveRiders();
        } catch (const toolbox::ProcessEnded &) {
        } catch (const toolbox::ScriptError &) {
        }
        met = toolbox::faults::met();
        seen = traced(" (newhandle)");
    }
    ASSERT_TRUE(seen);
    expectReport(16161, "95", " (newhandle)");
    EXPECT_TRUE(there());
    EXPECT_EQ(leftBehind().text(), toolbox::LeakReport{}.text());
}

TEST_F(Removal, CommandOneRunsIt)
{
    put(kMagic + "\r\n% the rest");
    user.answerOpen(riders());
    EXPECT_EQ(runCommand(kCommandRemove), 0);
    EXPECT_FALSE(there());
}

}  // namespace
