#include "source/open_settings.h"

#include "source/ktCustomDlg.h"
#include "source/ktSpot.h"
#include "source/listed_files.h"
#include "toolbox/files.h"
#include "toolbox/memory.h"

using toolbox::FileCall;

namespace {

const std::string kSpotMagic = "%!KT1_Spot";

class SpotImport : public OpenSettings {
protected:
    // Imports a file of these bytes, dismissing that many reports.
    bool import(const std::string &bytes, int reports = 0, const std::string &name = "Stars")
    {
        // Created with its type, which cannot be known from such bytes.
        Create(P(name), *toolbox::folders::workingDirectory(folder.path()), 'SPOT', 'TEXT');
        writeFile(folder / name, bytes);
        user.answerOpen(folder / name);
        for (int i = 0; i < reports; ++i)
            dismiss();
        Boolean imported = false;
        guarded([&] { imported = DoSpotImport(); });
        EXPECT_TRUE(user.idle());
        user.forgetRest();
        return imported;
    }

    std::string body() const { return gSpotHandle ? std::string(*gSpotHandle, gSpotLength) : "none"; }

    bool reported(int16_t messageID, int number, const std::string &context)
    {
        return traced(params(message(messageID), "\r\rID = " + std::to_string(number), context));
    }

    // Sets up an import from before, which a failure must leave alone.
    void haveEarlier() { importSpot("{ earlier }", "Earlier"); }

    void expectEarlier()
    {
        EXPECT_EQ(body(), "{ earlier }");
        EXPECT_EQ(settings.spotImported, 1);
        EXPECT_EQ(plain(settings.spotName), "Earlier");
    }
};

TEST_F(SpotImport, BodyIsAllAfterTheFirstReturn)
{
    const std::string text("{ dup\r\0mul\n}\xFF", 13);
    EXPECT_TRUE(import(kSpotMagic + " by me\r" + text));
    EXPECT_EQ(body(), text);
    EXPECT_EQ(settings.spotImported, 1);
    EXPECT_EQ(plain(settings.spotName), "Stars");
}

TEST_F(SpotImport, HeaderAloneGivesAnEmptyBody)
{
    EXPECT_TRUE(import(kSpotMagic + "\r"));
    EXPECT_EQ(gSpotLength, 0);
    EXPECT_NE(gSpotHandle, nullptr);
}

TEST_F(SpotImport, ReturnBeforeTheMagicCounts)
{
    EXPECT_TRUE(import("abc\r" + kSpotMagic + "\r{ }"));
    EXPECT_EQ(body(), kSpotMagic + "\r{ }");
}

TEST_F(SpotImport, MagicMayEndAtByte96)
{
    EXPECT_TRUE(import(std::string(85, 'x') + "\r" + kSpotMagic + "\r{ }"));
    EXPECT_FALSE(import(std::string(86, 'x') + "\r" + kSpotMagic + "\r{ }", 1, "Later"));
}

TEST_F(SpotImport, ReturnBeyondByte96IsRefused)
{
    EXPECT_FALSE(import(std::string(86, 'x') + kSpotMagic + "\r{ }", 1));
    EXPECT_TRUE(reported(16164, 52, " (no return offset)"));
}

TEST_F(SpotImport, MagicBeyondByte96IsRefused)
{
    EXPECT_FALSE(import(std::string(90, 'x') + kSpotMagic + "\r{ }", 1));
    EXPECT_TRUE(reported(16164, 51, " (%!KT1_Spot)"));
}

TEST_F(SpotImport, EmptyFileIsRefused)
{
    EXPECT_FALSE(import("", 1));
    EXPECT_TRUE(traced(params(message(16151))));
}

TEST_F(SpotImport, LineFeedIsNoReturn)
{
    EXPECT_FALSE(import(kSpotMagic + "\n{ }", 1));
    EXPECT_TRUE(reported(16164, 52, " (no return offset)"));
}

TEST_F(SpotImport, CancelChangesNothing)
{
    haveEarlier();
    user.cancelFile();
    EXPECT_FALSE(DoSpotImport());
    expectEarlier();
}

TEST_F(SpotImport, OnlyTextFilesAreListed)
{
    std::vector<std::string> listed =
        listedOfTwo(folder.path(), user, [&] { guarded([] { EXPECT_FALSE(DoSpotImport()); }); });
    EXPECT_EQ(listed, std::vector<std::string>{"A text"});
}

TEST_F(SpotImport, NameOf63CharactersIsKeptWhole)
{
    const std::string longest(63, 'n');
    EXPECT_TRUE(import(kSpotMagic + "\r{ }", 0, longest));
    EXPECT_EQ(plain(settings.spotName), longest);
}

TEST_F(SpotImport, NewImportFreesTheOldOne)
{
    haveEarlier();
    EXPECT_TRUE(import(kSpotMagic + "\r{ new }"));
    EXPECT_EQ(body(), "{ new }");
    close();
}

TEST_F(SpotImport, NewImportLeavesTheOneKeptForCancelling)
{
    haveEarlier();
    gSavedSpotHandle = gSpotHandle;
    EXPECT_TRUE(import(kSpotMagic + "\r{ new }"));
    EXPECT_EQ(std::string(*gSavedSpotHandle, 11), "{ earlier }");
    close();
}

struct Failure {
    const char *name;
    FileCall call;
    int nth;
    int16_t message;
    const char *context;
    bool clearsFlag;
};

class FailedImport : public SpotImport, public ::testing::WithParamInterface<Failure> {};

TEST_P(FailedImport, IsReportedAndLeavesTheEarlierOne)
{
    const Failure &failure = GetParam();
    haveEarlier();
    toolbox::faults::failFileCall(failure.call, failure.nth, ioErr);
    EXPECT_FALSE(import(kSpotMagic + "\r{ new }", 1));
    EXPECT_TRUE(reported(failure.message, -36, failure.context));
    EXPECT_EQ(body(), "{ earlier }");
    EXPECT_EQ(settings.spotImported, !failure.clearsFlag);
    EXPECT_EQ(plain(settings.spotName), "Earlier");
    close();
}

INSTANTIATE_TEST_SUITE_P(Each, FailedImport,
                         ::testing::Values(Failure{"Open", FileCall::open, 1, 16134, " (fsopen)", true},
                                           Failure{"Length", FileCall::getEOF, 1, 16134, " (eof)", true},
                                           Failure{"Check", FileCall::getEOF, 2, 16134, " (eof -check)", false},
                                           Failure{"Mark", FileCall::setFPos, 2, 16134, " (fsread)", false},
                                           Failure{"Header", FileCall::read, 1, 16134, " (fsread -check)", false},
                                           Failure{"Body", FileCall::read, 2, 16134, " (fsread)", false}),
                         [](const auto &info) { return info.param.name; });

// The length is the count that the failed read left: nothing was read.
TEST_F(SpotImport, FailedReadWithoutAnEarlierImportKeepsTheNewLengthUnused)
{
    gSpotLength = 77;
    toolbox::faults::failFileCall(FileCall::read, 2, ioErr);
    EXPECT_FALSE(import(kSpotMagic + "\r{ new }", 1));
    EXPECT_EQ(settings.spotImported, 0);
    ASSERT_NE(gSpotHandle, nullptr);
    EXPECT_EQ(GetHandleSize(gSpotHandle), 7);
    EXPECT_EQ(gSpotLength, 0);
    EXPECT_TRUE(import(kSpotMagic + "\r{ again }"));
    EXPECT_EQ(body(), "{ again }");
    close();
}

// The body's block is the last thing that an import asks memory for.
TEST_F(SpotImport, NoMemoryForTheBodyWithoutAnEarlierImportPutsTheLengthBack)
{
    int last = 0;
    for (int times = 0; times < 2; ++times) {  // the first loads resources
        toolbox::faults::clear();
        ASSERT_TRUE(import(kSpotMagic + "\r{ new }"));
        last = toolbox::faults::allocationCount();
        DisposeHandle(gSpotHandle);
        gSpotHandle = nullptr;
        settings.spotImported = 0;
    }
    gSpotLength = 77;
    toolbox::faults::failAllocation(last);
    EXPECT_FALSE(import(kSpotMagic + "\r{ new }", 1));
    EXPECT_TRUE(reported(16152, 95, " (newhandle)"));
    EXPECT_EQ(gSpotHandle, nullptr);
    EXPECT_EQ(settings.spotImported, 0);
    EXPECT_EQ(gSpotLength, 77);
    close();
}

TEST_F(SpotImport, OpenedFileIsClosed)
{
    import(kSpotMagic + "\r{ }");
    import("no spot", 1, "Other");
    EXPECT_EQ(leftBehind().openFiles, 0);
}

TEST_F(SpotImport, FileLargerThanMemoryIsRefused)
{
    configuration.heapBytes = 512 * 1024;
    reopen();
    EXPECT_FALSE(import(kSpotMagic + "\r" + std::string(1024 * 1024, ' '), 1));
    EXPECT_TRUE(reported(16152, 96, " (maxmem)"));
    EXPECT_EQ(settings.spotImported, 0);
}

TEST_F(SpotImport, FailureBeforeTheReadPutsTheLengthBack)
{
    gSpotLength = 77;
    for (const std::string &bytes : {std::string("something else"), kSpotMagic, std::string()}) {
        EXPECT_FALSE(import(bytes, 1));
        EXPECT_EQ(gSpotLength, 77);
    }
    toolbox::faults::failFileCall(FileCall::getEOF, 1, ioErr);
    EXPECT_FALSE(import(kSpotMagic + "\r{ }", 1));
    EXPECT_EQ(gSpotLength, 77);
}

TEST_F(SpotImport, HeapTooFullForTheHeaderIsReported)
{
    writeFile(folder / "Check", kSpotMagic + "\r{ }");
    int16_t refNum = 0;
    int32_t offset = 0;
    ASSERT_EQ(FSOpen(P("Check"), *toolbox::folders::workingDirectory(folder.path()), &refNum), noErr);
    Handle rest = NewHandle(MaxMem(nullptr) - 10240 - 8);
    ASSERT_NE(rest, nullptr);
    dismiss();
    guarded([&] { EXPECT_FALSE(CheckIfSpot(refNum, &offset)); });
    EXPECT_TRUE(reported(16152, 96, " (maxmem -check)"));
    DisposeHandle(rest);
    FSClose(refNum);
}

TEST_F(SpotImport, NoMemoryForTheHeaderIsReported)
{
    writeFile(folder / "Check", kSpotMagic + "\r{ }");
    int16_t refNum = 0;
    int32_t offset = 0;
    ASSERT_EQ(FSOpen(P("Check"), *toolbox::folders::workingDirectory(folder.path()), &refNum), noErr);
    toolbox::faults::failAllocation(1);
    dismiss();
    guarded([&] { EXPECT_FALSE(CheckIfSpot(refNum, &offset)); });
    FSClose(refNum);
    EXPECT_TRUE(reported(16152, 95, " (newhandle -check)"));
}

// The body's block is the last that an import allocates.
TEST_F(SpotImport, NoMemoryForTheBodyIsReportedAndTheEarlierOneKept)
{
    user.onSurprise([this](int) {
        user.press(1);
        return true;
    });
    haveEarlier();
    int nth = 100;
    for (; nth > 0 && !toolbox::faults::met(); --nth) {
        toolbox::faults::clear();
        toolbox::faults::failAllocation(nth);
        import(kSpotMagic + "\r{ " + std::to_string(nth) + " }");
    }
    ASSERT_TRUE(toolbox::faults::met());
    ASSERT_LT(nth, 99) << "the first import is to succeed";
    toolbox::faults::clear();
    EXPECT_TRUE(reported(16152, 95, " (newhandle)"));
    EXPECT_EQ(body(), "{ " + std::to_string(nth + 2) + " }");
    EXPECT_EQ(settings.spotImported, 1);
    close();
}

TEST_F(SpotImport, CheckLeavesTheMarkAtTheStart)
{
    for (const std::string &bytes : {kSpotMagic + "\r{ }", std::string("something else")}) {
        writeFile(folder / "Check", bytes);
        int16_t refNum = 0;
        ASSERT_EQ(FSOpen(P("Check"), *toolbox::folders::workingDirectory(folder.path()), &refNum), noErr);
        int32_t offset = 0, mark = -1;
        dismiss();
        guarded([&] { CheckIfSpot(refNum, &offset); });
        user.forgetRest();
        EXPECT_EQ(GetFPos(refNum, &mark), noErr);
        EXPECT_EQ(mark, 0);
        FSClose(refNum);
    }
}

}  // namespace
