// The settings that `riders make --save-settings` keeps.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "io/refusal.h"
#include "settings/saved_settings.h"
#include "support/command.h"
#include "support/toolbox_test.h"

namespace fs = std::filesystem;
using riders::settings::SavedSettings;

namespace {

constexpr char kData[] = "Riders Preferences", kFork[] = "._Riders Preferences";

class MakeSettings : public ::testing::Test {
protected:
    CommandResult make(std::vector<std::string> options)
    {
        options.insert(options.begin(), {"env", "XDG_CONFIG_HOME=" + (folder / "config").string(),
                                         RIDERS_BINARY_DIR "/riders", "make", "-o", "made", "--save-settings"});
        return runProgram(options, {}, folder.path());
    }
    fs::path kept(const std::string &name) const { return folder / "config" / "riders" / name; }
    int keptFiles() const
    {
        return static_cast<int>(std::distance(fs::directory_iterator(kept("")), fs::directory_iterator()));
    }

    TemporaryFolder folder;
};

// Where the record of 444 bytes has the settings dialog's place, in the bytes of the fork.
std::size_t placeIn(const std::string &fork)
{
    return fork.find(std::string("\0\0\x01\xBC", 4)) + 4 + 52;
}

}  // namespace

TEST_F(MakeSettings, ComeBackWithTheNextFile)
{
    writeFile(folder / "mine.spot", "%!KT1_Spot\rpop % kept\r");
    ASSERT_EQ(make({"--spot", "mine.spot"}).status, 0);
    EXPECT_EQ(contentsOf(kept(kData)), "pop % kept\r");
    EXPECT_FALSE(contentsOf(kept(kFork)).empty());
    EXPECT_EQ(keptFiles(), 2);
    ASSERT_EQ(make({"--angle", "45"}).status, 0);
    EXPECT_EQ(contentsOf(kept(kData)), "");
    EXPECT_EQ(keptFiles(), 2);
}

TEST_F(MakeSettings, WhereNoFolderCanBeNothingIsMade)
{
    fs::create_directories(folder / "config");
    writeFile(folder / "config" / "riders", "in the way");
    const CommandResult result = make({"--angle", "45"});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("config/riders: Not a directory"), std::string::npos) << result.err;
    EXPECT_EQ(contentsOf(folder / "config" / "riders"), "in the way");
    EXPECT_FALSE(fs::exists(folder / "made"));
}

TEST_F(MakeSettings, ThatCannotBeKeptAreMissedInWords)
{
    if (geteuid() == 0 && access("/usr/bin/setpriv", X_OK) != 0)
        GTEST_SKIP() << "root may write everywhere, and there is no setpriv";
    ASSERT_EQ(make({"--angle", "45"}).status, 0);
    const std::string before = contentsOf(kept(kFork));
    fs::remove(folder / "made");
    ASSERT_EQ(chmod(folder.path().c_str(), 0777), 0);
    ASSERT_EQ(chmod(kept("").c_str(), 0555), 0);
    std::vector<std::string> command = {"env",
                                        "XDG_CONFIG_HOME=" + (folder / "config").string(),
                                        RIDERS_BINARY_DIR "/riders",
                                        "make",
                                        "-o",
                                        "made",
                                        "--save-settings",
                                        "--angle",
                                        "30"};
    if (geteuid() == 0)
        command.insert(command.begin(), {"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"});
    const CommandResult result = runProgram(command, {}, folder.path());
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("its choices are not saved"), std::string::npos) << result.err;
    EXPECT_NE(result.err.find("Permission denied"), std::string::npos) << result.err;
    EXPECT_TRUE(contentsOf(folder / "made").starts_with("%!Zu3_Riders"));
    EXPECT_EQ(contentsOf(kept(kFork)), before);
    EXPECT_EQ(keptFiles(), 2);
}

TEST_F(MakeSettings, OfAnUnusableFileAreNoReasonToStop)
{
    fs::create_directories(kept(""));
    writeFile(kept(kData), "");
    writeFile(kept(kFork), "damaged");
    ASSERT_EQ(make({"--angle", "45"}).status, 0);
    // A fork without the record: what a killed window leaves.
    ASSERT_EQ(runProgram({"cp", RIDERS_BINARY_DIR "/._riders", kept(kFork)}).status, 0);
    const CommandResult result = make({"--angle", "45"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_NE(result.err.find("(GetPrefs)"), std::string::npos) << result.err;
    EXPECT_EQ(make({"--angle", "45"}).err, "");
}

TEST_F(MakeSettings, KeepTheirModeAndLink)
{
    ASSERT_EQ(make({"--angle", "45"}).status, 0);
    fs::create_directories(folder / "elsewhere");
    for (const char *name : {kData, kFork}) {
        ASSERT_EQ(chmod(kept(name).c_str(), 0600), 0);
        fs::rename(kept(name), folder / "elsewhere" / name);
    }
    fs::create_symlink(folder / "elsewhere" / kData, kept(kData));
    fs::rename(folder / "elsewhere" / kFork, kept(kFork));
    writeFile(folder / "mine.spot", "%!KT1_Spot\rpop\r");
    ASSERT_EQ(make({"--spot", "mine.spot"}).status, 0);
    EXPECT_TRUE(fs::is_symlink(kept(kData)));
    EXPECT_EQ(contentsOf(folder / "elsewhere" / kData), "pop\r");
    EXPECT_EQ(fs::status(kept(kFork)).permissions(), fs::perms(0600));
}

TEST_F(MakeSettings, DoNotDependOnWhereTheDialogWasLeftAndLeaveItThere)
{
    ASSERT_EQ(make({"--angle", "45"}).status, 0);
    std::string fork = contentsOf(kept(kFork));
    for (const std::string &place : {std::string("\x07\xD0\x0B\xB8", 4), std::string("\x01\xC0\x02\x60", 4),
                                     std::string("\xFF\x00\xFE\x00", 4)}) {
        fork.replace(placeIn(fork), 4, place);
        writeFile(kept(kFork), fork);
        const CommandResult result = make({"--frequency", "61", "--annotation", "x"});
        EXPECT_EQ(result.status, 0) << result.err;
        const std::string after = contentsOf(kept(kFork));
        EXPECT_EQ(after.substr(placeIn(after), 4), place);
    }
}

TEST_F(MakeSettings, DecidedByAKilledProcessCount)
{
    const SavedSettings settings(folder / "user", "set");
    fs::create_directories(folder / "user/.riders-settings");
    fs::create_directories(folder / "user/.riders-settings-0123456789abcdef");
    fs::create_directories(folder / "copy");
    writeFile(folder / "user/set", "new text");  // already in its place
    writeFile(folder / "user/._set", "old fork");
    writeFile(folder / "user/.riders-settings/._set", "new fork");
    writeFile(folder / "user/.riders-settings-0123456789abcdef/set", "never decided");
    settings.copyTo(folder / "copy");
    EXPECT_EQ(contentsOf(folder / "copy/set"), "new text");
    EXPECT_EQ(contentsOf(folder / "copy/._set"), "new fork");
    writeFile(folder / "copy/set", "newest");
    settings.takeFrom(folder / "copy");
    EXPECT_EQ(contentsOf(folder / "user/set"), "newest");
    EXPECT_EQ(contentsOf(folder / "user/._set"), "new fork");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder / "user"), fs::directory_iterator()), 2);
}
