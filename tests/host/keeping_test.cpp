// What becomes of the files that the plug-in writes in a session: the riders file and the saved settings.
#include "host/keeping_fixture.h"

namespace fs = std::filesystem;

namespace {

using namespace keeping;

bool canBeNobody()
{
    return geteuid() == 0 && access("/usr/bin/setpriv", X_OK) == 0;
}

}  // namespace

TEST_F(Kept, AReplacedFileKeepsItsModeAndOwner)
{
    writeFile(work / "made", "old");
    ASSERT_EQ(chmod((work / "made").c_str(), 0600), 0);
    if (geteuid() == 0) {
        ASSERT_EQ(chown((work / "made").c_str(), 1234, 1235), 0);
    }
    const struct stat before = statusOf("made");
    EXPECT_EQ(play(make).err, "");
    EXPECT_TRUE(isWhole(contentsOf(work / "made")));
    const struct stat after = statusOf("made");
    EXPECT_EQ(after.st_mode, before.st_mode);
    EXPECT_EQ(after.st_uid, before.st_uid);
    EXPECT_EQ(after.st_gid, before.st_gid);
    EXPECT_EQ(names(), std::vector<std::string>{"made"});
}

TEST_F(Kept, ALinkStaysALinkAndItsFileIsReplaced)
{
    fs::create_directory(folder / "elsewhere");
    writeFile(folder / "elsewhere" / "real", "old");
    fs::create_symlink("../elsewhere/real", work / "made");
    EXPECT_EQ(play(make).err, "");
    EXPECT_TRUE(fs::is_symlink(work / "made"));
    EXPECT_TRUE(isWhole(contentsOf(folder / "elsewhere" / "real")));
    EXPECT_EQ(names("elsewhere"), std::vector<std::string>{"real"});
    EXPECT_EQ(names(), std::vector<std::string>{"made"});
}

TEST_F(Kept, ALinkToNothingMakesItsFile)
{
    fs::create_symlink(folder / "real", work / "made");
    EXPECT_EQ(play(make).err, "");
    EXPECT_TRUE(fs::is_symlink(work / "made"));
    EXPECT_TRUE(isWhole(contentsOf(folder / "real")));
}

TEST_F(Kept, AReplacedFileKeepsWhatIsSaidBesideIt)
{
    const std::string beside = std::string("\0\5\x16\7\0\2\0\0", 8) + std::string(16, '\0') +
                               std::string("\0\1\0\0\0\x9\0\0\0\x26\0\0\0\x20", 14) + "TEXTRIDR" +
                               std::string(24, '\0');
    writeFile(work / "made", "old");
    writeFile(work / "._made", beside);
    EXPECT_EQ(play(make).err, "");
    EXPECT_TRUE(isWhole(contentsOf(work / "made")));
    EXPECT_NE(contentsOf(work / "._made").find("TEXTRIDR"), std::string::npos);
    EXPECT_EQ(names(), (std::vector<std::string>{"._made", "made"}));
}

TEST_F(Kept, ADeadFilesCompanionIsNotTheNewFiles)
{
    writeFile(work / "._made", "of a file that is gone");
    EXPECT_EQ(play(make).err, "");
    EXPECT_EQ(names(), std::vector<std::string>{"made"});
}

TEST_F(Kept, AFileThatFailsLeavesTheOldOne)
{
    writeFile(work / "made", "old");
    // A section that cannot be written is reported twice.
    for (const std::string fault : {"write 3", "setEOF 1", "rename 1", "rename 2", "remove 1", "open 1"}) {
        const std::string script = "start\ncommand 0\nchoose 4 3\npress 1\nfail " + fault +
                                   " -36\nsave work/made\npress 1\n" + (fault == "write 3" ? "press 1\n" : "");
        EXPECT_EQ(play(script).err, "") << fault;
        EXPECT_EQ(contentsOf(work / "made"), "old") << fault;
        EXPECT_EQ(names(), std::vector<std::string>{"made"}) << fault;
    }
}

// The script ends while the message about the failure is still open, and the file with it.
TEST_F(Kept, ASessionThatEndsInTheMiddleLeavesTheOldFile)
{
    writeFile(work / "made", "old");
    for (const char *fault : {"write 3", "open 1"}) {
        EXPECT_EQ(play("start\ncommand 0\nchoose 4 3\npress 1\nfail " + std::string(fault) + " -36\nsave work/made\n")
                      .status,
                  1);
        EXPECT_EQ(contentsOf(work / "made"), "old") << fault;
        EXPECT_EQ(names(), std::vector<std::string>{"made"}) << fault;
    }
}

TEST_F(Kept, WhatIsNoFileIsNotReplaced)
{
    ASSERT_EQ(mkfifo((work / "made").c_str(), 0600), 0);
    const CommandResult result = play(make);
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("is not an ordinary file; choose another name"), std::string::npos) << result.err;
    EXPECT_TRUE(S_ISFIFO(statusOf("made").st_mode));
    EXPECT_EQ(names(), std::vector<std::string>{"made"});
}

TEST_F(Kept, AFolderWithoutPermissionIsNamedAsSuch)
{
    if (!canBeNobody())
        GTEST_SKIP() << "only root can become somebody else";
    writeFile(work / "made", "mine");
    ASSERT_EQ(chmod((work / "made").c_str(), 0666), 0);
    ASSERT_EQ(chmod(work.c_str(), 0555), 0);
    ASSERT_EQ(chmod(folder.path().c_str(), 0777), 0);
    const CommandResult result = playAsNobody(make);
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("work: Permission denied"), std::string::npos) << result.err;
    EXPECT_EQ(contentsOf(work / "made"), "mine");
    fs::remove(work / "made");
    const CommandResult second = playAsNobody(make);
    EXPECT_NE(second.err.find("(create)"), std::string::npos) << "the plug-in has words for this: " << second.err;
}

TEST_F(Kept, SettingsThatCannotBeReadAreReported)
{
    writeFile(folder / "preferences", "a file, not a folder");
    const CommandResult result = play(make);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "riders play: session.play: your saved settings cannot be read, and stay as they are: "
                          "preferences: Not a directory\n");
    EXPECT_TRUE(isWhole(contentsOf(work / "made"))) << "the file is made all the same";
    EXPECT_EQ(contentsOf(folder / "preferences"), "a file, not a folder");
}

TEST_F(Kept, ChoicesThatCannotBeSavedCountInTheNextCall)
{
    writeFile(folder / "preferences", "a file, not a folder");
    play(std::string(make) + "command 0\nchoose 7 3\npress 1\nsave work/second\n");
    EXPECT_NE(contentsOf(work / "second").find("/riderFrequency"), std::string::npos) << "chosen for the first file";
}

TEST_F(Kept, SettingsThatFailToBeWrittenAreReportedAndTheOldOnesStay)
{
    EXPECT_EQ(play("start\ncommand 0\nchoose 4 3\npress 1\nsave work/made\n").err, "");
    const std::string before = contentsOf(folder / "preferences/._Riders Preferences");
    const CommandResult result = play("start\ncommand 0\nchoose 4 5\nfail write 1 -34 onward\nkey escape\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("your choices are not saved: their copy could not be written (-34)"),
              std::string::npos)
        << result.err;
    EXPECT_EQ(contentsOf(folder / "preferences/._Riders Preferences"), before);
}

TEST_F(Kept, SettingsThatCannotBeReadAreReportedAndStay)
{
    fs::create_directories(folder / "preferences" / "Riders Preferences");
    const CommandResult result = play(make);
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("your saved settings cannot be read, and stay as they are"), std::string::npos)
        << result.err;
    EXPECT_TRUE(fs::is_directory(folder / "preferences" / "Riders Preferences"));
}

TEST_F(Kept, WhatDoesNotChangeIsNotWrittenAgain)
{
    EXPECT_EQ(play("start\nabout\nkey return\n").err, "");
    const fs::path kept = folder / "preferences/._Riders Preferences";
    struct stat before, after;
    ASSERT_EQ(stat(kept.c_str(), &before), 0);
    EXPECT_EQ(play("start\nabout\nkey return\n").err, "");
    ASSERT_EQ(stat(kept.c_str(), &after), 0);
    EXPECT_EQ(after.st_ino, before.st_ino);
}
