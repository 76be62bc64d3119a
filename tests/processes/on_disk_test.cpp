// That each command's files are on the disk before they get their names, and their names before it ends.
#include "processes/on_disk.h"

#include "processes/commands.h"
#include "support/toolbox_test.h"

namespace {

using Found = std::vector<std::string>;

class OnDisk : public ::testing::TestWithParam<ChangingCommand> {
protected:
    TemporaryFolder place;
    CommandsFolder folder = CommandsFolder(place / "folder");
};

std::vector<ChangingCommand> writingCommands()
{
    std::vector<ChangingCommand> commands;
    for (const ChangingCommand &command : changingCommands())
        if (!command.ofChildren)
            commands.push_back(command);
    return commands;
}

std::string nameOf(const ::testing::TestParamInfo<ChangingCommand> &info)
{
    return info.param.name;
}

}  // namespace

TEST_P(OnDisk, BeforeItIsNamed)
{
    folder.reset(GetParam());
    const FollowedRun run = follow({folder.program(GetParam())});
    EXPECT_EQ(run.status, 0);
    EXPECT_GT(run.changes.size(), 3u);
    EXPECT_EQ(notOnDisk(run.changes, folder.path()), Found());
}

INSTANTIATE_TEST_SUITE_P(Commands, OnDisk, ::testing::ValuesIn(writingCommands()), nameOf);

TEST(OnDiskOrder, WhatAPowerFailureCanTakeIsFound)
{
    const FileChange write = {"write", "/f/.riders-1", {}}, sync = {"fsync", "/f/.riders-1", {}},
                     rename = {"rename", "/f/.riders-1", "/f/out"}, syncFolder = {"fsync", "/f", {}};
    EXPECT_EQ(notOnDisk({write, sync, rename, syncFolder}, "/f"), Found());
    EXPECT_EQ(notOnDisk({write, rename, syncFolder}, "/f"),
              Found{"/f/out gets its name before /f/.riders-1 is synced"});
    EXPECT_EQ(notOnDisk({sync, write, rename, syncFolder}, "/f").size(), 1u);
    EXPECT_EQ(notOnDisk({write, sync, rename}, "/f"), Found{"the names in /f are never synced"});
    EXPECT_EQ(notOnDisk({write, sync, syncFolder, rename}, "/f"), Found{"the names in /f are never synced"});
    EXPECT_EQ(notOnDisk({{"write", "/f/out", {}}}, "/f")[0], "write of /f/out in its place");
}

TEST(OnDiskOrder, OfAFolderAllThatIsInItCounts)
{
    const FileChange make = {"mkdir", "/f/.riders-1/new", {}}, write = {"write", "/f/.riders-1/new/film", {}},
                     sync = {"fsync", "/f/.riders-1/new/film", {}}, syncNew = {"fsync", "/f/.riders-1/new", {}},
                     rename = {"rename", "/f/.riders-1/new", "/f/out"}, syncFolder = {"fsync", "/f", {}};
    EXPECT_EQ(notOnDisk({make, write, sync, syncNew, rename, syncFolder}, "/f"), Found());
    EXPECT_EQ(notOnDisk({make, write, syncNew, rename, syncFolder}, "/f"),
              Found{"/f/out gets its name before /f/.riders-1/new/film is synced"});
    EXPECT_EQ(notOnDisk({make, write, sync, rename, syncFolder}, "/f")[0],
              "/f/out gets its name before /f/.riders-1/new is synced");
}
