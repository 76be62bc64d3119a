// A process's own folder, and those that killed processes left.
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <memory>

#include "io/private_folder.h"
#include "support/toolbox_test.h"

namespace fs = std::filesystem;
using riders::io::PrivateFolder;

TEST(PrivateFolder, IsForNobodyElseAndGoesWithItsOwner)
{
    fs::path place;
    {
        PrivateFolder own;
        place = own.path();
        struct stat status;
        ASSERT_EQ(stat(place.c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777, 0700u);
        writeFile(place / "file", "x");
    }
    EXPECT_FALSE(fs::exists(place));
}

TEST(PrivateFolder, OneInUseIsLeftAlone)
{
    PrivateFolder first;
    writeFile(first.path() / "file", "x");
    PrivateFolder second;
    EXPECT_NE(first.path(), second.path());
    EXPECT_EQ(contentsOf(first.path() / "file"), "x");
}

// In a place of its own: elsewhere any process that comes by removes it.
TEST(PrivateFolder, OfAKilledProcessIsRemovedByTheNext)
{
    TemporaryFolder notes, parent;
    const pid_t child = fork();
    if (child == 0) {
        auto *kept = new PrivateFolder(parent.path(), "own-");
        writeFile(kept->path() / "file", "x");
        writeFile(notes / "place", kept->path().string());
        kill(getpid(), SIGKILL);
    }
    int status = 0;
    waitpid(child, &status, 0);
    const fs::path left = contentsOf(notes / "place");
    ASSERT_TRUE(fs::exists(left / "file"));
    PrivateFolder next(parent.path(), "own-");
    EXPECT_FALSE(fs::exists(left));
}

TEST(PrivateFolder, ALinkOfItsNameIsNotFollowed)
{
    TemporaryFolder elsewhere;
    writeFile(elsewhere / "file", "x");
    TemporaryFolder parent;
    const fs::path link = parent / "own-00000000feedface";
    fs::create_directory_symlink(elsewhere.path(), link);
    PrivateFolder own(parent.path(), "own-");
    EXPECT_EQ(contentsOf(elsewhere / "file"), "x");
    EXPECT_TRUE(fs::is_symlink(link)) << "it was taken for the folder to which it leads";
}
