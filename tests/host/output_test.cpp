// Where output goes: links, litter, and what is on the disk when.
#include "io/output.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

#include "host/file_calls.h"
#include "io/litter.h"
#include "io/new_folder.h"
#include "io/refusal.h"
#include "support/command.h"
#include "support/toolbox_test.h"

namespace fs = std::filesystem;

namespace {

namespace io = riders::io;

using Calls = std::vector<std::string>;

class OutputTest : public ::testing::Test {
protected:
    // "done", or the message of the Refusal.
    std::string written(const fs::path &path, const std::string &bytes = "new")
    {
        try {
            io::writeFile(path, bytes);
        } catch (const io::Refusal &refusal) {
            return refusal.message;
        }
        return "done";
    }

    std::vector<std::string> left() const
    {
        std::vector<std::string> names;
        for (const fs::directory_entry &entry : fs::directory_iterator(folder.path()))
            names.push_back(entry.path().filename());
        std::sort(names.begin(), names.end());
        return names;
    }

    TemporaryFolder folder;
    fs::path out = folder / "out";
};

// Another user's link, in a folder where all may write.
TEST_F(OutputTest, LinkThatSomebodyElseHasPutThereIsNotFollowed)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can make another user's link";
    const fs::path shared = folder / "shared";
    fs::create_directory(shared);
    writeFile(folder / "mine", "precious");
    fs::create_symlink(folder / "mine", shared / "out");
    ASSERT_EQ(lchown((shared / "out").c_str(), 65534, 65534), 0);
    chmod(shared.c_str(), 0777);
    const std::string refused =
        (shared / "out").string() + ": is a link that somebody else has put there; it is not followed";
    EXPECT_EQ(written(shared / "out"), refused);
    chmod(shared.c_str(), 01777);
    EXPECT_NE(written(shared / "out"), "done");  // by us, or by the kernel
    EXPECT_EQ(contentsOf(folder / "mine"), "precious");
    fs::remove(folder / "mine");
    chmod(shared.c_str(), 0777);
    EXPECT_EQ(written(shared / "out"), refused);
    EXPECT_FALSE(fs::exists(folder / "mine"));
    chmod(shared.c_str(), 0755);
    EXPECT_EQ(written(shared / "out"), "done");
    EXPECT_EQ(contentsOf(folder / "mine"), "new");
    fs::remove(shared / "out");
    fs::create_symlink(folder / "mine", shared / "out");
    chmod(shared.c_str(), 0777);
    EXPECT_EQ(written(shared / "out", "newer"), "done");
    EXPECT_EQ(contentsOf(folder / "mine"), "newer");
}

TEST_F(OutputTest, WhatCannotBeLookedAtIsRefused)
{
    EXPECT_EQ(written(folder / std::string(300, 'x')),
              (folder / std::string(300, 'x')).string() + ": File name too long");
    if (geteuid() != 0)
        return;
    fs::create_directory(folder / "closed");
    chmod((folder / "closed").c_str(), 0700);
    fs::create_symlink(folder / "closed/out", folder / "link");
    chmod(folder.path().c_str(), 0755);
    ASSERT_EQ(seteuid(65534), 0);
    const std::string said = written(folder / "link");
    ASSERT_EQ(seteuid(0), 0);
    EXPECT_EQ(said, (folder / "link").string() + ": Permission denied");
}

// What a killed process left: owned by the user, with such a name, and locked by nobody.
TEST_F(OutputTest, LitterOfADeadProcessIsRemovedAndNoOther)
{
    const fs::path dead = folder / ".riders-out-0123456789abcdef", alive = folder / ".riders-out-00112233445566ff";
    for (const fs::path &file : {dead, alive, folder / ".riders-out-short", folder / ".riders-123-0"})
        writeFile(file, "bytes");
    fs::create_symlink("out", folder / ".riders-out-ffffffffffffffff");
    const int lock = open(alive.c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(flock(lock, LOCK_EX | LOCK_NB), 0);
    EXPECT_EQ(written(out), "done");
    EXPECT_EQ(left(), (Calls{".riders-123-0", alive.filename(), ".riders-out-ffffffffffffffff",
                             ".riders-out-short", "out"}));
    close(lock);
    const bool others = chown(alive.c_str(), 65534, 65534) == 0;  // only root can do that
    EXPECT_EQ(written(out), "done");
    EXPECT_EQ(fs::exists(alive), others) << "another user's stays";
}

TEST_F(OutputTest, HiddenFolderOfADeadProcessIsRemoved)
{
    fs::create_directories(folder / ".hidden-0123456789abcdef/work");
    writeFile(folder / ".hidden-0123456789abcdef/work/1.tif", "bytes");
    fs::create_directories(folder / ".hidden-abcdef");  // of an earlier version, alive or dead
    io::NewFolder one(folder / "one", ".hidden-");
    EXPECT_EQ(left().size(), 2u);
    io::NewFolder two(folder / "two", ".hidden-");
    EXPECT_EQ(left().size(), 3u) << "that of a process at work stays";
    one.finish();
    two.finish();
}

TEST_F(OutputTest, FileIsOnTheDiskBeforeItIsNamed)
{
    calls::note();
    EXPECT_EQ(written(out), "done");
    EXPECT_EQ(calls::noted(), (Calls{"fsync ~", "rename ~ out", "fsync " + folder.path().filename().string()}));
}

TEST_F(OutputTest, FolderIsOnTheDiskBeforeItIsMoved)
{
    for (const bool there : {false, true}) {
        io::NewFolder made(out, ".hidden-");
        fs::create_directory(made.path() / "films");
        writeFile(made.path() / "films/one", "bytes");
        calls::note();
        made.finish();
        Calls expected = {"fsync one", "fsync films", "fsync new", "renameat2 new out"};
        if (!there)
            expected.push_back("rename new out");
        expected.push_back("fsync " + folder.path().filename().string());
        EXPECT_EQ(calls::noted(), expected);
    }
}

// Two proofs at once: the other one was faster.
TEST_F(OutputTest, FolderThatAppearsMeanwhileIsReplaced)
{
    io::NewFolder made(out, ".hidden-");
    writeFile(made.path() / "file", "new");
    fs::create_directory(out);
    writeFile(out / "file", "the other's");
    calls::fail("renameat2", ENOENT);
    made.finish();
    EXPECT_EQ(contentsOf(out / "file"), "new");
}

TEST_F(OutputTest, FolderIsReplacedInTwoStepsWhereItCannotBeInOne)
{
    for (const std::string bytes : {"first", "second"}) {
        io::NewFolder made(out, ".hidden-");
        writeFile(made.path() / "file", bytes);
        calls::fail("renameat2", EINVAL);
        calls::note();
        made.finish();
        const Calls noted = calls::noted();
        EXPECT_EQ(std::find(noted.begin(), noted.end(), "rename new out") - noted.begin(), 4);
        EXPECT_EQ(contentsOf(out / "file"), bytes);
    }
    EXPECT_EQ(left(), Calls{"out"});
}

// What a process killed between these steps, or right after them, leaves.
TEST_F(OutputTest, FolderSetAsideByADeadProcessIsPutBack)
{
    const fs::path aside = folder / ".hidden-earlier-out";
    fs::create_directory(aside);
    writeFile(aside / "file", "earlier");
    {
        io::NewFolder made(out, ".hidden-");
        EXPECT_EQ(contentsOf(out / "file"), "earlier");
    }
    fs::create_directory(aside);
    writeFile(aside / "file", "earlier still");
    {
        io::NewFolder made(out, ".hidden-");
        EXPECT_EQ(contentsOf(out / "file"), "earlier");
    }
    EXPECT_EQ(left(), Calls{"out"});
}

TEST_F(OutputTest, DiskThatCannotWriteIsReported)
{
    EXPECT_EQ(written(out, "old"), "done");
    calls::fail("fsync", EIO);
    EXPECT_EQ(written(out), out.string() + ": Input/output error");
    EXPECT_EQ(contentsOf(out), "old");
    calls::fail("fsync", EINVAL, 2);  // cannot tell
    EXPECT_EQ(written(out), "done");
    EXPECT_EQ(left(), Calls{"out"});
}

}  // namespace
