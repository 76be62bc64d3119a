// `riders make`, killed before each system call that changes files, from the first until there are no more.
#include <cstdio>

#include "settings/saved_settings.h"
#include "support/command.h"
#include "support/killed.h"
#include "support/toolbox_test.h"

namespace fs = std::filesystem;

namespace {

// All of a user's settings, as the next command reads them.
std::string settingsIn(const fs::path &folder)
{
    TemporaryFolder copy;
    riders::settings::SavedSettings(folder, "Riders Preferences").copyTo(copy.path());
    const fs::path data = copy / "Riders Preferences";
    return (fs::exists(data) ? contentsOf(data) : "none") + contentsOf(copy / "._Riders Preferences");
}

// But for the temporary file of an output, which has a name between two calls only.
std::vector<std::string> namesIn(const fs::path &folder)
{
    std::vector<std::string> names;
    for (const fs::directory_entry &entry : fs::directory_iterator(folder))
        if (const std::string name = entry.path().filename(); !name.starts_with(".riders-") || !isdigit(name[8]))
            names.push_back(name);
    std::sort(names.begin(), names.end());
    return names;
}

class MakeKilled : public ::testing::Test {
protected:
    void SetUp() override
    {
        setenv("XDG_CONFIG_HOME", (folder / "config").c_str(), 1);
        fs::create_directories(folder / "work");
        writeFile(folder / "one.spot", "%!KT1_Spot\rpop % one\r");
        writeFile(folder / "two.spot", "%!KT1_Spot\rpop % two\r");
        for (const char *spot : {"two", "one"}) {
            const CommandResult result = runProgram(command(spot), {}, work());
            ASSERT_EQ(result.status, 0) << result.err;
            const bool first = std::string(spot) == "two";
            (first ? newFile : oldFile) = contentsOf(folder / "work/made");
            (first ? newSettings : oldSettings) = settingsIn(folder / "config/riders");
        }
    }
    void TearDown() override { unsetenv("XDG_CONFIG_HOME"); }

    std::string work() const { return folder / "work"; }
    std::vector<std::string> command(const std::string &spot) const
    {
        return {RIDERS_BINARY_DIR "/riders", "make",           "-o", "made", "--spot",
                folder / (spot + ".spot"),   "--save-settings"};
    }
    bool killedAt(int nth) const { return killedAtChange(nth, command("two"), work()); }

    TemporaryFolder folder;
    std::string oldFile, newFile, oldSettings, newSettings;
};

}  // namespace

TEST_F(MakeKilled, LeavesOldOrNewAndNoHarmForTheNext)
{
    ASSERT_NE(oldFile, newFile);
    ASSERT_NE(oldSettings, newSettings);
    int nth = 1;
    for (; killedAt(nth); ++nth) {
        const std::string file = contentsOf(folder / "work/made");
        const std::string settings = settingsIn(folder / "config/riders");
        EXPECT_TRUE(file == oldFile || file == newFile) << "killed at change " << nth;
        EXPECT_TRUE(settings == oldSettings || settings == newSettings) << "killed at change " << nth;
        const CommandResult next = runProgram(command("one"), {}, work());
        EXPECT_EQ(next.status, 0) << "after change " << nth << ": " << next.err;
        EXPECT_EQ(next.err, "") << "after change " << nth;
        EXPECT_EQ(contentsOf(folder / "work/made"), oldFile) << "after change " << nth;
        EXPECT_EQ(settingsIn(folder / "config/riders"), oldSettings) << "after change " << nth;
        EXPECT_EQ(namesIn(work()), std::vector<std::string>{"made"}) << "after change " << nth;
        EXPECT_EQ(namesIn(folder / "config/riders").size(), 2u) << "after change " << nth;
    }
    std::printf("killed at each of %d changes\n", nth - 1);
    EXPECT_GT(nth, 20);
    EXPECT_EQ(contentsOf(folder / "work/made"), newFile);
}
