// Resource forks and Finder information beside real files.
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include "files/forks.h"
#include "support/toolbox_test.h"
#include "toolbox/files.h"
#include "toolbox/host/appledouble.h"

using namespace toolbox;
using namespace toolbox::files;
namespace fs = std::filesystem;

namespace {

class CompanionTest : public ToolboxTest {
protected:
    OSErr write(const std::string &bytes) { return writeFork({0, 0, "a"}, bytes); }
    std::string fork()
    {
        std::string bytes;
        EXPECT_EQ(readFork({0, 0, "a"}, bytes), noErr);
        return bytes;
    }
    int filesHere() { return static_cast<int>(std::distance(fs::directory_iterator(folder.path()), {})); }
};

// A disk on which a file can have so many bytes and no more.
class FullDisk {
public:
    explicit FullDisk(std::size_t bytes) : before_(signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &limit_);
        rlimit full{bytes, limit_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &full);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &limit_);
        signal(SIGXFSZ, before_);
    }
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

private:
    rlimit limit_;
    sighandler_t before_;
};

}  // namespace

TEST_F(CompanionTest, ForkIsReadBack)
{
    writeFile(folder / "a", "data");
    EXPECT_EQ(fork(), "");
    EXPECT_EQ(write("fork"), noErr);
    EXPECT_EQ(fork(), "fork");
    EXPECT_EQ(contentsOf(folder / "a"), "data");
    EXPECT_EQ(write(""), noErr);
    EXPECT_EQ(fork(), "");
    EXPECT_EQ(filesHere(), 1);
}

TEST_F(CompanionTest, MinimalCompanionHasTheDocumentedBytes)
{
    Create(P("a"), 0, 'ttxt', 'PICT');
    std::string bytes = contentsOf(folder / "._a");
    AppleDouble expected = newAppleDouble();
    expected.setFinderInfo("PICTttxt");
    EXPECT_EQ(bytes, composeAppleDouble(expected));
    EXPECT_EQ(bytes.size(), 82u);
    EXPECT_EQ(bytes.substr(50, 8), "PICTttxt");
}

TEST_F(CompanionTest, MissingFileHasNoForkButAnOrphanDoes)
{
    std::string bytes;
    EXPECT_EQ(readFork({0, 0, "a"}, bytes), fnfErr);
    EXPECT_EQ(readFork({0, 99, "a"}, bytes), dirNFErr);
    EXPECT_EQ(readFork({0, 0, "._a"}, bytes), bdNamErr);
    write("fork");
    fs::remove(folder / "a");
    EXPECT_EQ(fork(), "fork");
}

TEST_F(CompanionTest, WritingAForkMakesTheFile)
{
    EXPECT_EQ(write("fork"), noErr);
    EXPECT_TRUE(fs::exists(folder / "a"));
    EXPECT_EQ(contentsOf(folder / "a"), "");
}

TEST_F(CompanionTest, ForkAndFinderInformationLeaveEachOtherAlone)
{
    write("fork");
    FInfo info{'pref', 'RIDR', 0, {0, 0}, 0};
    SetFInfo(P("a"), 0, &info);
    EXPECT_EQ(fork(), "fork");
    write("another");
    FInfo got{};
    GetFInfo(P("a"), 0, &got);
    EXPECT_EQ(got.fdCreator, static_cast<OSType>('RIDR'));
    info = {};
    SetFInfo(P("a"), 0, &info);
    EXPECT_EQ(fork(), "another");
}

TEST_F(CompanionTest, OtherEntriesAreKept)
{
    writeFile(folder / "a", "data");
    AppleDouble file = newAppleDouble();
    file.set(4, "a comment");
    writeFile(folder / "._a", composeAppleDouble(file));
    write("fork");
    write("");
    auto after = parseAppleDouble(contentsOf(folder / "._a"));
    ASSERT_TRUE(after);
    EXPECT_EQ(after->bytes(4), "a comment");
}

// Its first bytes cannot be read, as on a sick disk.
TEST_F(CompanionTest, TypeOfAFileThatCannotBeReadIsNotGuessed)
{
    fs::create_symlink("/proc/self/mem", folder / "a");
    FInfo info{};
    EXPECT_EQ(GetFInfo(P("a"), 0, &info), ioErr);
    info.fdType = 'PICT';
    EXPECT_EQ(SetFInfo(P("a"), 0, &info), ioErr);
    EXPECT_EQ(filesHere(), 1);
}

TEST_F(CompanionTest, DamagedCompanionIsNeitherReadNorOverwritten)
{
    writeFile(folder / "a", "data");
    Create(P("b"), 0, 'RIDR', 'pref');
    std::string good = contentsOf(folder / "._b");
    for (std::size_t length = 0; length < good.size(); ++length) {
        std::string bad = good.substr(0, length);
        writeFile(folder / "._a", bad);
        std::string bytes = "before";
        EXPECT_EQ(readFork({0, 0, "a"}, bytes), ioErr);
        EXPECT_EQ(bytes, "");
        EXPECT_EQ(write("fork"), ioErr);
        FInfo info{};
        EXPECT_EQ(GetFInfo(P("a"), 0, &info), noErr);
        EXPECT_EQ(info.fdType, static_cast<OSType>('TEXT'));
        info.fdType = 'PICT';
        EXPECT_EQ(SetFInfo(P("a"), 0, &info), ioErr);
        EXPECT_EQ(contentsOf(folder / "._a"), bad);
    }
}

TEST_F(CompanionTest, WhatIsNotAFileIsNotACompanion)
{
    writeFile(folder / "a", "data");
    ASSERT_EQ(mkfifo((folder / "._a").c_str(), 0666), 0);
    std::string bytes;
    EXPECT_EQ(readFork({0, 0, "a"}, bytes), ioErr);
    EXPECT_EQ(write("fork"), ioErr);
    fs::remove(folder / "._a");
    fs::create_directory(folder / "._a");
    EXPECT_EQ(readFork({0, 0, "a"}, bytes), ioErr);
    EXPECT_EQ(FSDelete(P("a"), 0), noErr);
}

TEST_F(CompanionTest, HugeCompanionIsRefusedUnread)
{
    writeFile(folder / "a", "data");
    writeFile(folder / "._a", "");
    fs::resize_file(folder / "._a", std::uintmax_t{1} << 40);
    std::string bytes;
    EXPECT_EQ(readFork({0, 0, "a"}, bytes), ioErr);
}

TEST_F(CompanionTest, LockedFileOrCompanionKeepsItsFork)
{
    write("old");
    fs::permissions(folder / "a", fs::perms(0444));
    EXPECT_EQ(write("new"), fLckdErr);
    fs::permissions(folder / "a", fs::perms(0644));
    fs::permissions(folder / "._a", fs::perms(0444));
    EXPECT_EQ(write("new"), fLckdErr);
    EXPECT_EQ(write(""), fLckdErr);
    EXPECT_EQ(fork(), "old");
}

TEST_F(CompanionTest, CompanionHasTheRightsOfItsFile)
{
    writeFile(folder / "a", "data");
    fs::permissions(folder / "a", fs::perms(0640));
    write("fork");
    EXPECT_EQ(fs::status(folder / "._a").permissions(), fs::perms(0640));
    fs::permissions(folder / "._a", fs::perms(0600));
    write("longer fork");
    EXPECT_EQ(fs::status(folder / "._a").permissions(), fs::perms(0600));
}

TEST_F(CompanionTest, FullDiskLeavesTheOldFork)
{
    write("old");
    std::string newFork(400, 'n');
    for (std::size_t room = 0; room < 82 + newFork.size(); room += 37) {
        OSErr error;
        {
            FullDisk disk(room);
            error = write(newFork);
        }
        EXPECT_EQ(error, dskFulErr) << room;
        EXPECT_EQ(fork(), "old");
        EXPECT_EQ(filesHere(), 2) << "a temporary file was left";
    }
    EXPECT_EQ(write(newFork), noErr);
    EXPECT_EQ(fork(), newFork);
}

TEST_F(CompanionTest, FullDiskLeavesNoFileThatWasNotThere)
{
    OSErr error;
    {
        FullDisk disk(10);
        error = write("fork");
    }
    EXPECT_EQ(error, dskFulErr);
    {
        FullDisk disk(10);
        error = Create(P("b"), 0, 'RIDR', 'pref');
    }
    EXPECT_EQ(error, dskFulErr);
    EXPECT_EQ(filesHere(), 0);
}

TEST_F(CompanionTest, FullDiskGivesAShortWrite)
{
    Create(P("a"), 0, 'ttxt', 'TEXT');
    int16_t refNum;
    ASSERT_EQ(FSOpen(P("a"), 0, &refNum), noErr);
    int32_t count = 10;
    OSErr error;
    {
        FullDisk disk(4);
        error = FSWrite(refNum, &count, "0123456789");
    }
    EXPECT_EQ(error, dskFulErr);
    EXPECT_EQ(count, 4);
    EXPECT_TRUE(traced("file write \"a\" 4 bytes -> -34"));
    FSClose(refNum);
}

TEST_F(CompanionTest, PlannedFaultLeavesTheOldFork)
{
    write("old");
    faults::failFileCall(FileCall::write, 1, dskFulErr);
    EXPECT_EQ(write("new"), dskFulErr);
    EXPECT_EQ(fork(), "old");
    EXPECT_EQ(write("new"), noErr);
    EXPECT_EQ(fork(), "new");
}
