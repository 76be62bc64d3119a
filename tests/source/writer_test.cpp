#include "source/making.h"
#include "support/riders_pieces.h"

#include <algorithm>

#include "source/errors.h"
#include "source/ktAnnoDlg.h"
#include "source/ktCustomDlg.h"
#include "source/ktMakeRiders.h"
#include "source/ktSpot.h"
#include "toolbox/files.h"

namespace fs = std::filesystem;
using toolbox::FileCall;

namespace {

class Writer : public Making {};

TEST_F(Writer, CancellingTheSaveDialogCreatesNothing)
{
    user.cancelFile();
    guarded([&] { EXPECT_EQ(MakeCustomRiders(), 0); });
    EXPECT_TRUE(files().empty());
}

TEST_F(Writer, NothingChosenIsHeaderBeginAndSetup)
{
    EXPECT_EQ(make(), 1);
    EXPECT_EQ(contentsOf(file()), pieceBytes(16499) + pieceBytes(16500) + pieceBytes(16600));
}

TEST_F(Writer, ScreenCheckFollowsTheHeaderWhenOnlyTheAngleIsChosen)
{
    choose(&PrefsRec::angleItem, 6);
    make();
    std::string begin = pieceBytes(16499) + pieceBytes(16500) + pieceBytes(16135);
    EXPECT_EQ(contentsOf(file()).substr(0, begin.size()), begin);
}

TEST_F(Writer, AnySpotFunctionReplacesTheScreenCheck)
{
    chooseEverything();
    make();
    EXPECT_EQ(contentsOf(file()).find(pieceBytes(16135)), std::string::npos);
}

TEST_F(Writer, AnnotationItemOtherThan2IsNotWritten)
{
    choose(&PrefsRec::annoItem, 3);
    make();
    EXPECT_EQ(contentsOf(file()), pieceBytes(16499) + pieceBytes(16500) + pieceBytes(16600));
}

TEST_F(Writer, EveryCombinationOfSectionsIsThePiecesInOrder)
{
    for (int bits = 0; bits < 64; ++bits) {
        choose(&PrefsRec::spotItem, bits & 1 ? 3 + bits % 7 : 1);
        choose(&PrefsRec::freqItem, bits & 2 ? 5 : 1);
        choose(&PrefsRec::angleItem, bits & 4 ? 6 : 1);
        choose(&PrefsRec::flatItem, bits & 8 ? 4 : 1);
        choose(&PrefsRec::annoItem, bits & 16 ? 2 : 1);
        choose(&PrefsRec::errorItem, bits & 32 ? 2 : 1);
        ASSERT_EQ(make(), 1);
        ASSERT_EQ(contentsOf(file()), expected()) << "combination " << bits;
        ASSERT_EQ(files(), std::vector<std::string>{"made"}) << "combination " << bits;
    }
}

TEST_F(Writer, NewFileIsAnEditorsText)
{
    make();
    EXPECT_EQ(info().fdType, OSType{'TEXT'});
    EXPECT_EQ(info().fdCreator, OSType{'ttxt'});
}

TEST_F(Writer, ReplacingKeepsTypeAndCreatorAndLeavesNoTemporaryFile)
{
    writeOld();
    chooseEverything();
    EXPECT_EQ(make(), 1);
    EXPECT_EQ(info().fdType, OSType{'TEXT'});
    EXPECT_EQ(info().fdCreator, OSType{'RiDe'});
    EXPECT_EQ(contentsOf(file()), expected());
    EXPECT_EQ(files(), std::vector<std::string>{"made"});
}

TEST_F(Writer, OldFileGetsItsInfoBackWhereverReplacingStops)
{
    struct {
        FileCall kind;
        int nth;
    } const stops[] = {{FileCall::rename, 1}, {FileCall::rename, 2}, {FileCall::remove, 1}};
    for (const auto &stop : stops) {
        fs::remove_all(out());
        fs::create_directory(out());
        writeOld();
        toolbox::faults::failFileCall(stop.kind, stop.nth, ioErr);
        trace.clear();
        make(1);
        EXPECT_TRUE(toolbox::faults::met());
        toolbox::faults::clear();
        EXPECT_EQ(tracedTimes("file setFInfo \"made\" -> 0"), 1) << reports().front();
        EXPECT_EQ(contentsOf(file()), kOldContents);
    }
}

TEST_F(Writer, FileOfAnotherTypeGivesTypeCreatorAndFlagsToTheNewOne)
{
    writeOld();
    FInfo old = info();
    old.fdType = 'EPSF';
    old.fdCreator = 'ART5';
    old.fdFlags = 0x4142;
    ASSERT_EQ(SetFInfo(P("made"), *toolbox::folders::workingDirectory(out()), &old), noErr);
    chooseEverything();
    EXPECT_EQ(make(), 1);
    EXPECT_EQ(contentsOf(file()), expected());
    EXPECT_EQ(info().fdType, OSType{'EPSF'});
    EXPECT_EQ(info().fdCreator, OSType{'ART5'});
    EXPECT_EQ(info().fdFlags, 0x4142);
}

// Somebody makes the file longer while it is written.
TEST_F(Writer, WhatIsBeyondTheBytesWrittenIsCutOff)
{
    for (bool replacing : {false, true}) {
        if (replacing)
            writeOld();
        toolbox::trace::setSink([&](const std::string &line) {
            if (line.starts_with("file write"))
                for (const std::string &name : files())
                    if (contentsOf(out() / name) != kOldContents)
                        fs::resize_file(out() / name, 200000);
        });
        make();
        toolbox::trace::setSink(toolbox::trace::into(trace));
        EXPECT_EQ(contentsOf(file()), expected());
        EXPECT_EQ(gTotalLength, static_cast<int32_t>(expected().size()));
        fs::remove(file());
    }
}

TEST_F(Writer, VolumeIsFlushedOnceTheLengthIsSet)
{
    make();
    std::vector<std::string> calls;
    for (const std::string &line : trace)
        if (line.starts_with("file setEOF") || line.starts_with("file flushVol") || line.starts_with("file close"))
            calls.push_back(line.substr(5, line.find(' ', 5) - 5));
    EXPECT_EQ(calls, (std::vector<std::string>{"setEOF", "flushVol", "close"}));
    EXPECT_TRUE(traced("file flushVol \"\" -> 0"));
}

TEST_F(Writer, FlushThatFailsIsNoWord)
{
    toolbox::faults::failFileCall(FileCall::flushVol, 1, ioErr);
    make();
    EXPECT_TRUE(toolbox::faults::met());
    EXPECT_EQ(contentsOf(file()), expected());
    EXPECT_FALSE(gHaveWriteError);
}

TEST_F(Writer, ExistingTemporaryFileIsLeftAlone)
{
    // The names come from a generator that starts the same in every process.
    writeOld();
    qd.randSeed = 1;
    std::string taken = "KTTemp1" + std::to_string(Random());
    writeFile(out() / taken, "somebody's");
    qd.randSeed = 1;
    make();
    EXPECT_EQ(contentsOf(out() / taken), "somebody's");
    EXPECT_EQ(contentsOf(file()), expected());
    EXPECT_EQ(files().size(), 2u);
}

TEST_F(Writer, NamesThatAreAllTakenAreNotWrittenTo)
{
    writeOld();
    qd.randSeed = 1;
    std::vector<std::string> taken;
    for (int i = 0; i < 8; ++i)
        taken.push_back("KTTemp1" + std::to_string(Random()));
    for (const std::string &name : taken)
        std::filesystem::create_symlink(out() / "victim", out() / name);
    writeFile(out() / "victim", "somebody's");
    qd.randSeed = 1;
    make(1);
    EXPECT_EQ(contentsOf(out() / "victim"), "somebody's");
    EXPECT_EQ(contentsOf(file()), kOldContents);
    EXPECT_EQ(files().size(), 10u);
}

TEST_F(Writer, NameUnderWhichTheOldFileStepsAsideIsNotTakenEither)
{
    writeOld();
    qd.randSeed = 1;
    Random();
    std::string taken = "KTTemp2" + std::to_string(Random());
    writeFile(out() / taken, "somebody's");
    qd.randSeed = 1;
    make();
    EXPECT_EQ(contentsOf(out() / taken), "somebody's");
    EXPECT_EQ(contentsOf(file()), expected());
    EXPECT_EQ(files(), (std::vector<std::string>{taken, "made"}));
}

TEST_F(Writer, RefusedReplacementGoesBackToTheSaveDialog)
{
    writeOld();
    user.answerSave(file(), false);
    user.cancelFile();
    guarded([&] { EXPECT_EQ(MakeCustomRiders(), 0); });
    EXPECT_EQ(contentsOf(file()), kOldContents);
}

TEST_F(Writer, MissingPromptIsFatal)
{
    removeResource('STR#', 16129);
    dismiss();
    EXPECT_FALSE(guarded([] { MakeCustomRiders(); }));
    EXPECT_TRUE(traced(params(message(16129), "\r\rID = 90", " (STR# resource)")));
}

TEST_F(Writer, AsksToCloseAfterAMakeWithoutAWriteErrorOnly)
{
    make();
    EXPECT_FALSE(gDone);
    settings.closeAfterMake = 1;
    toolbox::faults::failFileCall(FileCall::write, 1, ioErr);
    make(1);
    EXPECT_FALSE(gDone);
    EXPECT_TRUE(gHaveWriteError);
    make();
    EXPECT_TRUE(gDone);
    EXPECT_FALSE(gHaveWriteError);
}

TEST_F(Writer, FailedSpotIsFollowedByAReportOfTheFrequency)
{
    choose(&PrefsRec::spotItem, 3);
    choose(&PrefsRec::freqItem, 5);
    choose(&PrefsRec::angleItem, 6);
    toolbox::faults::failFileCall(FileCall::write, 3, dskFulErr);
    make(2);
    EXPECT_EQ(reports(), (std::vector<std::string>{"-34 (writespot)", "-51 (writefreq)"}));
    EXPECT_TRUE(files().empty());
}

TEST_F(Writer, FailedScreenCheckIsFollowedByAReportOfTheFrequency)
{
    choose(&PrefsRec::freqItem, 5);
    toolbox::faults::failFileCall(FileCall::write, 3, dskFulErr);
    make(2);
    EXPECT_EQ(reports(), (std::vector<std::string>{"-34 (writespot)", "-51 (writefreq)"}));
}

TEST_F(Writer, FailedSpotWithoutAFrequencyIsReportedOnce)
{
    choose(&PrefsRec::spotItem, 3);
    choose(&PrefsRec::angleItem, 6);
    toolbox::faults::failFileCall(FileCall::write, 3, dskFulErr);
    make(1);
    EXPECT_EQ(reports(), (std::vector<std::string>{"-34 (writespot)"}));
}

TEST_F(Writer, FileOfAFailedMakeIsClosedOnceMore)
{
    toolbox::faults::failFileCall(FileCall::write, 1, ioErr);
    make(1);
    EXPECT_EQ(tracedTimes("file close"), 2);
    EXPECT_TRUE(traced("-> -51"));
}

TEST_F(Writer, NewFileStaysOpenWhileItIsRenamed)
{
    writeOld();
    make();
    auto find = [&](const std::string &part) {
        return std::find_if(trace.begin(), trace.end(),
                            [&](const std::string &line) { return line.find(part) != std::string::npos; });
    };
    EXPECT_EQ(tracedTimes("file rename"), 2);
    EXPECT_LT(find("file rename"), find("file close"));
}

TEST_F(Writer, ImportedSpotFunctionIsInTheFile)
{
    importSpot("{ 2 copy mul }");
    make();
    EXPECT_NE(contentsOf(file()).find(pieceBytes(16506) + "{ 2 copy mul }" + pieceBytes(16507)),
              std::string::npos);
}

}  // namespace
