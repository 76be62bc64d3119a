// The File Manager's calls, one by one, on real files.
#include <sys/stat.h>

#include "support/toolbox_test.h"
#include "toolbox/files.h"
#include "toolbox/host/removal.h"

using namespace toolbox;
namespace fs = std::filesystem;

namespace {

// Four question marks.
constexpr OSType unknown = 0x3F3F3F3F;

class FileTest : public ToolboxTest {
protected:
    int16_t opened(const std::string &name, int8_t permission = fsCurPerm)
    {
        int16_t refNum = 0;
        EXPECT_EQ(HOpen(0, 0, P(name), permission, &refNum), noErr) << name;
        return refNum;
    }
    OSErr written(int16_t refNum, const std::string &bytes)
    {
        auto count = static_cast<int32_t>(bytes.size());
        OSErr error = FSWrite(refNum, &count, bytes.data());
        EXPECT_TRUE(error != noErr || count == static_cast<int32_t>(bytes.size()));
        return error;
    }
    std::string read(int16_t refNum, int32_t count, OSErr expected = noErr)
    {
        std::string bytes(static_cast<std::size_t>(count), '\0');
        EXPECT_EQ(FSRead(refNum, &count, bytes.data()), expected);
        bytes.resize(static_cast<std::size_t>(count));
        return bytes;
    }
    FInfo info(const std::string &name)
    {
        FInfo found{};
        EXPECT_EQ(GetFInfo(P(name), 0, &found), noErr) << name;
        return found;
    }
    bool hasCompanion(const std::string &name) { return fs::exists(folder / ("._" + name)); }
    void lock(const std::string &name) { fs::permissions(folder / name, fs::perms(0444)); }
};

}  // namespace

TEST_F(FileTest, CreateMakesAPlainEmptyFile)
{
    EXPECT_EQ(Create(P("riders"), 0, 'ttxt', 'TEXT'), noErr);
    EXPECT_EQ(contentsOf(folder / "riders"), "");
    EXPECT_TRUE(fs::exists(folder / "riders"));
    EXPECT_FALSE(hasCompanion("riders"));
    EXPECT_EQ(info("riders").fdType, static_cast<OSType>('TEXT'));
    EXPECT_EQ(info("riders").fdCreator, static_cast<OSType>('ttxt'));
}

TEST_F(FileTest, CreateRefusesANameThatExists)
{
    writeFile(folder / "riders", "precious");
    EXPECT_EQ(Create(P("riders"), 0, 'ttxt', 'TEXT'), dupFNErr);
    EXPECT_EQ(contentsOf(folder / "riders"), "precious");
    fs::create_directory(folder / "box");
    EXPECT_EQ(Create(P("box"), 0, 'ttxt', 'TEXT'), dupFNErr);
}

TEST_F(FileTest, CreateSaysWhatIsWrongWithThePlace)
{
    EXPECT_EQ(Create(P("a"), -5, 'ttxt', 'TEXT'), nsvErr);
    EXPECT_EQ(HCreate(0, 4711, P("a"), 'ttxt', 'TEXT'), dirNFErr);
    fs::create_directory(folder / "gone");
    int16_t gone = folders::workingDirectory(folder / "gone").value();
    fs::remove(folder / "gone");
    EXPECT_EQ(Create(P("a"), gone, 'ttxt', 'TEXT'), dirNFErr);
    int16_t refNum;
    EXPECT_EQ(FSOpen(P("a"), gone, &refNum), dirNFErr);
}

TEST_F(FileTest, CreateKeepsAnotherTypeInTheCompanion)
{
    EXPECT_EQ(Create(P("settings"), 0, 'RIDR', 'pref'), noErr);
    EXPECT_TRUE(hasCompanion("settings"));
    EXPECT_EQ(info("settings").fdType, static_cast<OSType>('pref'));
    EXPECT_EQ(info("settings").fdCreator, static_cast<OSType>('RIDR'));
    EXPECT_EQ(info("settings").fdFlags, 0);
}

TEST_F(FileTest, CreateIgnoresAnOrphan)
{
    Create(P("a"), 0, 'RIDR', 'pref');
    fs::remove(folder / "a");
    EXPECT_EQ(Create(P("a"), 0, 'ttxt', 'TEXT'), noErr);
    EXPECT_EQ(info("a").fdType, static_cast<OSType>('TEXT'));
}

TEST_F(FileTest, CreateLeavesNothingWhereTheTypeCannotBeKept)
{
    fs::create_directory(folder / "._a");
    EXPECT_NE(Create(P("a"), 0, 'RIDR', 'pref'), noErr);
    EXPECT_FALSE(fs::exists(folder / "a"));
}

TEST_F(FileTest, WhatIsWrittenIsRead)
{
    Create(P("a"), 0, 'ttxt', 'TEXT');
    int16_t refNum = opened("a");
    EXPECT_EQ(written(refNum, "hello "), noErr);
    EXPECT_EQ(written(refNum, "there"), noErr);
    EXPECT_EQ(SetFPos(refNum, fsFromStart, 6), noErr);
    EXPECT_EQ(read(refNum, 5), "there");
    EXPECT_EQ(FSClose(refNum), noErr);
    EXPECT_EQ(contentsOf(folder / "a"), "hello there");
}

TEST_F(FileTest, OpeningWhatIsNotThereSaysSo)
{
    int16_t refNum = 99;
    EXPECT_EQ(FSOpen(P("nothing"), 0, &refNum), fnfErr);
    EXPECT_EQ(refNum, 0);
    fs::create_directory(folder / "box");
    EXPECT_EQ(FSOpen(P("box"), 0, &refNum), fnfErr);
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0666), 0);
    EXPECT_EQ(FSOpen(P("pipe"), 0, &refNum), fnfErr);
}

TEST_F(FileTest, NumbersOfClosedFilesStayFree)
{
    writeFile(folder / "a", "a");
    writeFile(folder / "b", "b");
    int16_t first = opened("a");
    EXPECT_GT(first, 0);
    EXPECT_EQ(FSClose(first), noErr);
    int16_t second = opened("b");
    EXPECT_NE(first, second);
    EXPECT_EQ(FSClose(first), rfNumErr);
    EXPECT_EQ(read(second, 1), "b");
    EXPECT_EQ(FSClose(second), noErr);
}

TEST_F(FileTest, NumbersNeverRunOut)
{
    writeFile(folder / "a", "a");
    trace::setSink({});
    int16_t kept = opened("a", fsRdPerm);
    for (int i = 0; i < 33000; ++i) {
        int16_t refNum = 0;
        ASSERT_EQ(HOpen(0, 0, P("a"), fsRdPerm, &refNum), noErr) << i;
        ASSERT_NE(refNum, kept);
        ASSERT_GT(refNum, 0);
        ASSERT_EQ(FSClose(refNum), noErr);
    }
    EXPECT_EQ(read(kept, 1), "a");
    FSClose(kept);
}

TEST_F(FileTest, EveryCallRefusesAWrongNumber)
{
    int32_t number = 7;
    EXPECT_EQ(FSClose(0), rfNumErr);
    EXPECT_EQ(FSRead(77, &number, &number), rfNumErr);
    EXPECT_EQ(number, 0);
    number = 7;
    EXPECT_EQ(FSWrite(77, &number, &number), rfNumErr);
    EXPECT_EQ(number, 0);
    EXPECT_EQ(GetEOF(77, &number), rfNumErr);
    EXPECT_EQ(SetEOF(77, 0), rfNumErr);
    EXPECT_EQ(GetFPos(77, &number), rfNumErr);
    EXPECT_EQ(SetFPos(77, fsFromStart, 0), rfNumErr);
}

TEST_F(FileTest, ReadingPastTheEndGivesWhatThereIs)
{
    writeFile(folder / "a", "12345");
    int16_t refNum = opened("a");
    EXPECT_EQ(read(refNum, 15, eofErr), "12345");
    EXPECT_EQ(read(refNum, 15, eofErr), "");
    EXPECT_EQ(read(refNum, 0), "");
    FSClose(refNum);
}

TEST_F(FileTest, MarkMovesAsAsked)
{
    writeFile(folder / "a", "0123456789");
    int16_t refNum = opened("a");
    int32_t mark = -1;
    EXPECT_EQ(SetFPos(refNum, fsFromLEOF, -3), noErr);
    EXPECT_EQ(SetFPos(refNum, fsFromMark, -2), noErr);
    EXPECT_EQ(SetFPos(refNum, fsAtMark, 100), noErr);
    EXPECT_EQ(GetFPos(refNum, &mark), noErr);
    EXPECT_EQ(mark, 5);
    EXPECT_EQ(SetFPos(refNum, fsFromStart, -1), posErr);
    EXPECT_EQ(SetFPos(refNum, 9, 0), paramErr);
    GetFPos(refNum, &mark);
    EXPECT_EQ(mark, 5);
    EXPECT_EQ(SetFPos(refNum, fsFromStart, 11), eofErr);
    GetFPos(refNum, &mark);
    EXPECT_EQ(mark, 10);
    FSClose(refNum);
}

TEST_F(FileTest, SetEOFGrowsAndTruncates)
{
    writeFile(folder / "a", "0123456789");
    int16_t refNum = opened("a");
    SetFPos(refNum, fsFromLEOF, 0);
    EXPECT_EQ(SetEOF(refNum, 4), noErr);
    int32_t number = -1;
    GetFPos(refNum, &number);
    EXPECT_EQ(number, 4);
    EXPECT_EQ(SetEOF(refNum, 6), noErr);
    GetEOF(refNum, &number);
    EXPECT_EQ(number, 6);
    EXPECT_EQ(SetEOF(refNum, -1), paramErr);
    FSClose(refNum);
    EXPECT_EQ(contentsOf(folder / "a"), std::string("0123\0\0", 6));
}

TEST_F(FileTest, WriteBeforeTheEndReplaces)
{
    writeFile(folder / "a", "0123456789");
    int16_t refNum = opened("a");
    SetFPos(refNum, fsFromStart, 3);
    EXPECT_EQ(written(refNum, "xyz"), noErr);
    FSClose(refNum);
    EXPECT_EQ(contentsOf(folder / "a"), "012xyz6789");
}

TEST_F(FileTest, NegativeCountsAreRefused)
{
    writeFile(folder / "a", "x");
    int16_t refNum = opened("a");
    int32_t count = -1;
    char byte = 0;
    EXPECT_EQ(FSRead(refNum, &count, &byte), paramErr);
    count = -1;
    EXPECT_EQ(FSWrite(refNum, &count, &byte), paramErr);
    FSClose(refNum);
}

TEST_F(FileTest, FilesBeyondTwoGigabytesAreNotMisreported)
{
    writeFile(folder / "big", "x");
    fs::resize_file(folder / "big", 0x80000000u);
    int16_t refNum = opened("big");
    int32_t number = 0;
    EXPECT_EQ(GetEOF(refNum, &number), paramErr);
    EXPECT_EQ(SetFPos(refNum, fsFromLEOF, -1), noErr);
    EXPECT_EQ(GetFPos(refNum, &number), noErr);
    EXPECT_EQ(number, 0x7FFFFFFF);
    EXPECT_EQ(written(refNum, "y"), dskFulErr);
    FSClose(refNum);
}

TEST_F(FileTest, LockedFileOpensForReadingOnly)
{
    writeFile(folder / "a", "locked");
    lock("a");
    int16_t refNum = opened("a");
    EXPECT_EQ(read(refNum, 6), "locked");
    EXPECT_EQ(written(refNum, "x"), wrPermErr);
    EXPECT_EQ(SetEOF(refNum, 0), wrPermErr);
    FSClose(refNum);
    EXPECT_EQ(HOpen(0, 0, P("a"), fsRdWrPerm, &refNum), permErr);
    EXPECT_EQ(HOpen(0, 0, P("a"), fsWrPerm, &refNum), permErr);
    EXPECT_EQ(contentsOf(folder / "a"), "locked");
}

TEST_F(FileTest, ReadPermissionAloneDoesNotWrite)
{
    writeFile(folder / "a", "text");
    int16_t refNum = opened("a", fsRdPerm);
    EXPECT_EQ(written(refNum, "x"), wrPermErr);
    FSClose(refNum);
    EXPECT_EQ(HOpen(0, 0, P("a"), 9, &refNum), paramErr);
}

TEST_F(FileTest, OneWriterAtATime)
{
    writeFile(folder / "a", "text");
    int16_t writer = opened("a");
    int16_t refNum = 0;
    EXPECT_EQ(HOpen(0, 0, P("a"), fsRdWrPerm, &refNum), opWrErr);
    int16_t reader = opened("a");
    EXPECT_EQ(written(reader, "x"), wrPermErr);
    EXPECT_EQ(written(writer, "new!"), noErr);
    EXPECT_EQ(read(reader, 4), "new!");
    FSClose(writer);
    int16_t next = opened("a", fsRdWrPerm);
    FSClose(next);
    FSClose(reader);
}

TEST_F(FileTest, DeleteRemovesBothForks)
{
    Create(P("a"), 0, 'RIDR', 'pref');
    EXPECT_EQ(FSDelete(P("a"), 0), noErr);
    EXPECT_FALSE(fs::exists(folder / "a"));
    EXPECT_FALSE(hasCompanion("a"));
    EXPECT_EQ(FSDelete(P("a"), 0), fnfErr);
}

TEST_F(FileTest, HostMayKeepWhatIsDeleted)
{
    writeFile(folder / "a", "text");
    fs::path asked;
    bool keep = true;
    toolbox::setRemoval([&](const fs::path &file) {
        asked = file;
        return keep;
    });
    EXPECT_EQ(FSDelete(P("a"), 0), noErr);
    EXPECT_EQ(asked, folder / "a");
    EXPECT_TRUE(fs::exists(folder / "a"));
    EXPECT_EQ(FSDelete(P("not there"), 0), fnfErr);
    EXPECT_EQ(asked, folder / "a") << "only what can be deleted";
    keep = false;
    EXPECT_EQ(FSDelete(P("a"), 0), noErr);
    EXPECT_FALSE(fs::exists(folder / "a"));
    toolbox::setRemoval({});
}

TEST_F(FileTest, DeleteLeavesWhatIsLockedOrOpen)
{
    writeFile(folder / "a", "text");
    int16_t refNum = opened("a", fsRdPerm);
    EXPECT_EQ(FSDelete(P("a"), 0), fBsyErr);
    FSClose(refNum);
    lock("a");
    EXPECT_EQ(FSDelete(P("a"), 0), fLckdErr);
    EXPECT_EQ(contentsOf(folder / "a"), "text");
}

TEST_F(FileTest, DeleteNeedsTheExactName)
{
    writeFile(folder / "OUT", "somebody's");
    EXPECT_EQ(FSDelete(P("out"), 0), fnfErr);
    EXPECT_EQ(Rename(P("out"), 0, P("x")), fnfErr);
    EXPECT_TRUE(fs::exists(folder / "OUT"));
    fs::create_directory(folder / "box");
    EXPECT_EQ(FSDelete(P("box"), 0), fnfErr);
}

TEST_F(FileTest, RenameMovesBothForks)
{
    Create(P("a"), 0, 'RIDR', 'pref');
    EXPECT_EQ(Rename(P("a"), 0, P("b")), noErr);
    EXPECT_FALSE(fs::exists(folder / "a"));
    EXPECT_FALSE(hasCompanion("a"));
    EXPECT_EQ(info("b").fdType, static_cast<OSType>('pref'));
}

TEST_F(FileTest, RenameReplacesNothing)
{
    writeFile(folder / "a", "a");
    writeFile(folder / "b", "b");
    EXPECT_EQ(Rename(P("a"), 0, P("b")), dupFNErr);
    EXPECT_EQ(Rename(P("a"), 0, P("a")), dupFNErr);
    EXPECT_EQ(contentsOf(folder / "b"), "b");
    EXPECT_EQ(Rename(P("c"), 0, P("d")), fnfErr);
    EXPECT_EQ(Rename(P("a"), 0, P("d:e")), bdNamErr);
    lock("a");
    EXPECT_EQ(Rename(P("a"), 0, P("c")), fLckdErr);
    EXPECT_EQ(contentsOf(folder / "a"), "a");
}

TEST_F(FileTest, RenameDoesNotTakeOnAnOrphan)
{
    Create(P("b"), 0, 'RIDR', 'pref');
    fs::remove(folder / "b");
    writeFile(folder / "a", "plain");
    EXPECT_EQ(Rename(P("a"), 0, P("b")), noErr);
    EXPECT_EQ(info("b").fdType, static_cast<OSType>('TEXT'));
}

TEST_F(FileTest, RenameIsUndoneWhereTheCompanionCannotFollow)
{
    Create(P("a"), 0, 'RIDR', 'pref');
    fs::create_directory(folder / "._b");
    writeFile(folder.path() / "._b" / "in the way", "");
    EXPECT_NE(Rename(P("a"), 0, P("b")), noErr);
    EXPECT_FALSE(fs::exists(folder / "b"));
    EXPECT_EQ(info("a").fdType, static_cast<OSType>('pref'));
}

TEST_F(FileTest, RenamedWhileOpenKeepsWorking)
{
    Create(P("a"), 0, 'ttxt', 'TEXT');
    int16_t refNum = opened("a");
    written(refNum, "one ");
    EXPECT_EQ(Rename(P("a"), 0, P("b")), noErr);
    trace.clear();
    EXPECT_EQ(written(refNum, "two"), noErr);
    EXPECT_TRUE(traced("file write \"b\" 3 bytes -> 0"));
    EXPECT_EQ(FSDelete(P("b"), 0), fBsyErr);
    EXPECT_EQ(FSClose(refNum), noErr);
    EXPECT_EQ(contentsOf(folder / "b"), "one two");
    EXPECT_EQ(FSClose(refNum), rfNumErr);
    EXPECT_TRUE(traced("file close \"b\" -> -51"));
    EXPECT_EQ(FSDelete(P("b"), 0), noErr);
}

TEST_F(FileTest, ReplacingByTwoRenamesLeavesTheNewFile)
{
    writeFile(folder / "riders", "old");
    Create(P("KTTemp1"), 0, 'ttxt', 'TEXT');
    int16_t refNum = opened("KTTemp1");
    written(refNum, "new");
    FInfo old = info("riders");
    EXPECT_EQ(SetFInfo(P("KTTemp1"), 0, &old), noErr);
    EXPECT_EQ(Rename(P("riders"), 0, P("KTTemp2")), noErr);
    EXPECT_EQ(Rename(P("KTTemp1"), 0, P("riders")), noErr);
    EXPECT_EQ(FSDelete(P("KTTemp2"), 0), noErr);
    EXPECT_EQ(FSClose(refNum), noErr);
    EXPECT_EQ(contentsOf(folder / "riders"), "new");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator()), 1);
}

TEST_F(FileTest, TextIsRecognisedByItsBeginning)
{
    writeFile(folder / "text", "%!PS\r\xE9t\xE9 \x04\r");
    writeFile(folder / "nul", std::string("abc\0def", 7));
    writeFile(folder / "controls", "\x01\x02\x03\x04\x05\x06 abc");
    writeFile(folder / "late nul", std::string(2000, 'x') + '\0');
    EXPECT_EQ(info("text").fdType, static_cast<OSType>('TEXT'));
    EXPECT_EQ(info("text").fdCreator, static_cast<OSType>('ttxt'));
    EXPECT_EQ(info("nul").fdType, unknown);
    EXPECT_EQ(info("nul").fdCreator, unknown);
    EXPECT_EQ(info("controls").fdType, unknown);
    EXPECT_EQ(info("late nul").fdType, static_cast<OSType>('TEXT'));
}

TEST_F(FileTest, TextThatNoLongerLooksLikeItStaysText)
{
    Create(P("a"), 0, 'ttxt', 'TEXT');
    int16_t refNum = opened("a");
    written(refNum, std::string("%!\0\0\0", 5));
    EXPECT_EQ(FSClose(refNum), noErr);
    EXPECT_EQ(info("a").fdType, static_cast<OSType>('TEXT'));
    EXPECT_TRUE(hasCompanion("a"));
}

TEST_F(FileTest, OwnTypeIsNotMistakenForText)
{
    Create(P("a"), 0, unknown, unknown);
    EXPECT_TRUE(hasCompanion("a"));
    int16_t refNum = opened("a");
    written(refNum, std::string("%!\0\0\0", 5));
    FSClose(refNum);
    EXPECT_EQ(info("a").fdType, unknown);
}

TEST_F(FileTest, FinderInformationIsReadBackWhole)
{
    writeFile(folder / "a", "text");
    FInfo set{'PICT', 'draw', 0x4002, {-5, 700}, 3};
    EXPECT_EQ(SetFInfo(P("a"), 0, &set), noErr);
    FInfo got = info("a");
    EXPECT_EQ(got.fdType, set.fdType);
    EXPECT_EQ(got.fdCreator, set.fdCreator);
    EXPECT_EQ(got.fdFlags, set.fdFlags);
    EXPECT_EQ(got.fdLocation.v, -5);
    EXPECT_EQ(got.fdLocation.h, 700);
    EXPECT_EQ(got.fdFldr, 3);
    EXPECT_EQ(contentsOf(folder / "a"), "text");
}

TEST_F(FileTest, CompanionIsDeletedWhenItHoldsNothing)
{
    writeFile(folder / "a", "text");
    FInfo info{'PICT', 'draw', 0, {0, 0}, 0};
    SetFInfo(P("a"), 0, &info);
    EXPECT_TRUE(hasCompanion("a"));
    info = {'TEXT', 'ttxt', 0, {0, 0}, 0};
    EXPECT_EQ(SetFInfo(P("a"), 0, &info), noErr);
    EXPECT_FALSE(hasCompanion("a"));
    info.fdFlags = 1;
    SetFInfo(P("a"), 0, &info);
    EXPECT_TRUE(hasCompanion("a"));
    info = {};
    EXPECT_EQ(SetFInfo(P("a"), 0, &info), noErr);
    EXPECT_FALSE(hasCompanion("a"));
}

TEST_F(FileTest, FinderInformationOfLockedOrMissingFilesStays)
{
    FInfo info{'PICT', 'draw', 0, {0, 0}, 0};
    EXPECT_EQ(SetFInfo(P("a"), 0, &info), fnfErr);
    EXPECT_EQ(GetFInfo(P("a"), 0, &info), fnfErr);
    writeFile(folder / "a", "text");
    lock("a");
    EXPECT_EQ(SetFInfo(P("a"), 0, &info), fLckdErr);
    EXPECT_FALSE(hasCompanion("a"));
}

TEST_F(FileTest, FlushKnowsItsVolume)
{
    Create(P("a"), 0, 'ttxt', 'TEXT');
    int16_t refNum = opened("a");
    written(refNum, "text");
    EXPECT_EQ(FlushVol(nullptr, 0), noErr);
    EXPECT_EQ(FlushVol(nullptr, kOnSystemDisk), noErr);
    EXPECT_EQ(FlushVol(nullptr, -7), nsvErr);
    FSClose(refNum);
}

TEST_F(FileTest, NilArgumentsAreRefused)
{
    writeFile(folder / "a", "text");
    EXPECT_EQ(Create(nullptr, 0, 'ttxt', 'TEXT'), bdNamErr);
    EXPECT_EQ(FSOpen(P("a"), 0, nullptr), paramErr);
    EXPECT_EQ(GetFInfo(P("a"), 0, nullptr), paramErr);
    EXPECT_EQ(SetFInfo(P("a"), 0, nullptr), paramErr);
    int16_t refNum = opened("a");
    EXPECT_EQ(GetEOF(refNum, nullptr), paramErr);
    EXPECT_EQ(GetFPos(refNum, nullptr), paramErr);
    EXPECT_EQ(FSRead(refNum, nullptr, nullptr), paramErr);
    EXPECT_EQ(FSWrite(refNum, nullptr, nullptr), paramErr);
    FSClose(refNum);
}

TEST_F(FileTest, OpenFilesAreCountedAndClosedAtTheEnd)
{
    writeFile(folder / "a", "text");
    int before = leftBehind().openFiles;
    int16_t refNum = opened("a");
    EXPECT_EQ(leftBehind().openFiles, before + 1);
    restart();
    EXPECT_EQ(leftBehind().openFiles, 0);
    EXPECT_EQ(FSClose(refNum), rfNumErr);
}

TEST_F(FileTest, EveryCallIsTraced)
{
    Create(P("a\"b"), 0, 'ttxt', 'TEXT');
    int16_t refNum = opened("a\"b");
    written(refNum, "hello");
    SetFPos(refNum, fsFromStart, 0);
    read(refNum, 9, eofErr);
    int32_t number;
    GetEOF(refNum, &number);
    GetFPos(refNum, &number);
    SetEOF(refNum, 2);
    FlushVol(nullptr, 0);
    FSClose(refNum);
    FInfo info;
    GetFInfo(P("a\"b"), 0, &info);
    SetFInfo(P("a\"b"), 0, &info);
    Rename(P("a\"b"), 0, P("c"));
    FSDelete(P("d"), 0);
    EXPECT_EQ(trace, (std::vector<std::string>{
                         "file create \"a\\\"b\" -> 0", "file open \"a\\\"b\" -> 0",
                         "file write \"a\\\"b\" 5 bytes -> 0", "file setFPos \"a\\\"b\" -> 0",
                         "file read \"a\\\"b\" 5 bytes -> -39", "file getEOF \"a\\\"b\" -> 0",
                         "file getFPos \"a\\\"b\" -> 0", "file setEOF \"a\\\"b\" -> 0", "file flushVol \"\" -> 0",
                         "file close \"a\\\"b\" -> 0", "file getFInfo \"a\\\"b\" -> 0",
                         "file setFInfo \"a\\\"b\" -> 0", "file rename \"a\\\"b\" -> 0", "file remove \"d\" -> -43"}));
}

TEST_F(FileTest, PlannedFaultKeepsTheCallFromItsWork)
{
    faults::failFileCall(FileCall::create, 1, dskFulErr);
    EXPECT_EQ(Create(P("a"), 0, 'ttxt', 'TEXT'), dskFulErr);
    EXPECT_FALSE(fs::exists(folder / "a"));
    writeFile(folder / "a", "text");
    int16_t refNum = 5;
    faults::failFileCall(FileCall::open, 1, ioErr);
    EXPECT_EQ(FSOpen(P("a"), 0, &refNum), ioErr);
    EXPECT_EQ(refNum, 0);
    refNum = opened("a");
    faults::failFileCall(FileCall::write, 1, dskFulErr);
    int32_t count = 3;
    EXPECT_EQ(FSWrite(refNum, &count, "xyz"), dskFulErr);
    EXPECT_EQ(count, 0);
    EXPECT_TRUE(traced("file write \"a\" 0 bytes -> -34"));
    faults::failFileCall(FileCall::setEOF, 1, ioErr);
    EXPECT_EQ(SetEOF(refNum, 0), ioErr);
    faults::failFileCall(FileCall::rename, 1, fLckdErr);
    EXPECT_EQ(Rename(P("a"), 0, P("b")), fLckdErr);
    faults::failFileCall(FileCall::remove, 1, fBsyErr);
    EXPECT_EQ(FSDelete(P("a"), 0), fBsyErr);
    FSClose(refNum);
    EXPECT_EQ(contentsOf(folder / "a"), "text");
}

TEST_F(FileTest, PlannedFaultMayStopHalfway)
{
    writeFile(folder / "a", "text");
    const int16_t refNum = opened("a");
    faults::stopHalfway(FileCall::read, 1, ioErr);
    char buffer[] = "....";
    int32_t count = 4;
    EXPECT_EQ(FSRead(refNum, &count, buffer), ioErr);
    EXPECT_EQ(count, 2);
    EXPECT_STREQ(buffer, "te..");
    faults::stopHalfway(FileCall::write, 1, dskFulErr);
    count = 5;
    EXPECT_EQ(FSWrite(refNum, &count, "abcde"), dskFulErr);
    EXPECT_EQ(count, 2);
    EXPECT_TRUE(traced("file write \"a\" 2 bytes -> -34"));
    FSClose(refNum);
    EXPECT_EQ(contentsOf(folder / "a"), "teab");
}

TEST_F(FileTest, PlannedFaultOfCloseStillCloses)
{
    writeFile(folder / "a", "text");
    int16_t refNum = opened("a");
    faults::failFileCall(FileCall::close, 1, ioErr);
    EXPECT_EQ(FSClose(refNum), ioErr);
    EXPECT_EQ(leftBehind().openFiles, 0);
    EXPECT_EQ(FSClose(refNum), rfNumErr);
}
