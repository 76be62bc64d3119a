// Files made and deleted where others, or the disk, get in between.
#include <errno.h>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "support/toolbox_test.h"
#include "toolbox/files.h"
#include "toolbox/host/failed_changes.h"
#include "toolbox/resources.h"

namespace fs = std::filesystem;

namespace {

std::string cannotBeUnlinked;  // the end of a path; empty: everything can

class FileSafety : public ToolboxTest {
protected:
    void TearDown() override
    {
        cannotBeUnlinked.clear();
        ToolboxTest::TearDown();
    }
};

}  // namespace

// In the place of the C library's, which the Toolbox calls.
extern "C" int unlink(const char *path) noexcept
{
    if (!cannotBeUnlinked.empty() && std::string(path).ends_with(cannotBeUnlinked)) {
        errno = EIO;
        return -1;
    }
    return static_cast<int>(syscall(SYS_unlinkat, AT_FDCWD, path, 0));
}

TEST_F(FileSafety, AFileWhoseCompanionStaysIsDeletedAllTheSame)
{
    ASSERT_EQ(Create(P("film"), 0, 'abcd', 'efgh'), noErr);
    ASSERT_TRUE(fs::exists(folder / "._film"));
    cannotBeUnlinked = "/._film";
    EXPECT_EQ(FSDelete(P("film"), 0), noErr);
    EXPECT_FALSE(fs::exists(folder / "film"));
    // What is left is not passed on.
    EXPECT_EQ(Create(P("film"), 0, 'ttxt', 'TEXT'), ioErr);
    EXPECT_FALSE(fs::exists(folder / "film"));
    cannotBeUnlinked.clear();
    EXPECT_EQ(Create(P("film"), 0, 'ttxt', 'TEXT'), noErr);
    EXPECT_FALSE(fs::exists(folder / "._film"));
}

TEST_F(FileSafety, CreateFollowsNoLink)
{
    fs::create_symlink(folder / "victim", folder / "film");
    EXPECT_EQ(Create(P("film"), 0, 'ttxt', 'TEXT'), dupFNErr);
    EXPECT_FALSE(fs::exists(folder / "victim"));
}

TEST_F(FileSafety, WhatTookTheNewFilesPlaceIsNotOpened)
{
    writeFile(folder / "victim", "somebody's");
    ASSERT_EQ(Create(P("film"), 0, 'ttxt', 'TEXT'), noErr);
    fs::remove(folder / "film");
    fs::create_symlink(folder / "victim", folder / "film");
    int16_t refNum = 0;
    EXPECT_EQ(FSOpen(P("film"), 0, &refNum), fnfErr);
    EXPECT_EQ(refNum, 0);
    // Later it is a file like any other.
    EXPECT_EQ(FSOpen(P("film"), 0, &refNum), noErr);
    EXPECT_EQ(FSClose(refNum), noErr);
}

TEST_F(FileSafety, AFileJustMadeThatCannotBeOpenedIsAFailedChange)
{
    int16_t refNum = 0;
    EXPECT_EQ(FSOpen(P("nothing"), 0, &refNum), fnfErr);
    EXPECT_EQ(HOpenResFile(0, 0, P("nothing"), fsRdPerm), -1);
    EXPECT_EQ(toolbox::firstFailedChange(), noErr) << "there may be none";
    for (bool fork : {false, true}) {
        restart();
        fs::remove(folder / "film");
        ASSERT_EQ(Create(P("film"), 0, 'ttxt', 'TEXT'), noErr);
        toolbox::faults::failFileCall(fork ? toolbox::FileCall::openResFile : toolbox::FileCall::open, 1, ioErr);
        if (fork)
            HOpenResFile(0, 0, P("film"), fsRdWrPerm);
        else
            FSOpen(P("film"), 0, &refNum);
        EXPECT_EQ(toolbox::firstFailedChange(), ioErr);
    }
}

TEST_F(FileSafety, SoIsAForkThatCannotBeMadeAndAResourceThatCannotBeAdded)
{
    toolbox::faults::failFileCall(toolbox::FileCall::createResFile, 1, dskFulErr);
    HCreateResFile(0, 0, P("film"));
    EXPECT_EQ(toolbox::firstFailedChange(), dskFulErr);
    restart();
    HCreateResFile(0, 0, P("film"));
    ASSERT_NE(HOpenResFile(0, 0, P("film"), fsRdWrPerm), -1);
    AddResource(nullptr, 'STUF', 128, P(""));
    EXPECT_EQ(toolbox::firstFailedChange(), addResFailed);
    restart();
    int16_t volume;
    int32_t directory;
    toolbox::faults::failFileCall(toolbox::FileCall::findFolder, 1, ioErr);
    EXPECT_EQ(FindFolder(kOnSystemDisk, kPreferencesFolderType, true, &volume, &directory), ioErr);
    EXPECT_EQ(toolbox::firstFailedChange(), ioErr);
}

TEST_F(FileSafety, TheFirstFailedChangeIsRemembered)
{
    EXPECT_EQ(toolbox::firstFailedChange(), noErr);
    EXPECT_EQ(FSDelete(P("nothing"), 0), fnfErr);
    EXPECT_EQ(toolbox::firstFailedChange(), noErr);
    toolbox::faults::failFileCall(toolbox::FileCall::flushVol, 1, ioErr);
    EXPECT_EQ(FlushVol(nullptr, 0), ioErr);
    writeFile(folder / "film", "x");
    EXPECT_EQ(Create(P("film"), 0, 'ttxt', 'TEXT'), dupFNErr);
    EXPECT_EQ(toolbox::firstFailedChange(), ioErr);
    EXPECT_EQ(toolbox::firstFailedChange("film"), dupFNErr);
    EXPECT_EQ(toolbox::firstFailedChange("fil"), noErr);
    toolbox::forgetFailedChanges();
    EXPECT_EQ(toolbox::firstFailedChange(), noErr);
    EXPECT_EQ(toolbox::firstFailedChange("film"), noErr);
}
