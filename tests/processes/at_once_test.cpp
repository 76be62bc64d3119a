// Many processes that write to one place at once: none fails, and what is left is wholly one of theirs.
#include <algorithm>

#include "support/command.h"
#include "support/toolbox_test.h"

namespace fs = std::filesystem;

namespace {

class AtOnce : public ::testing::Test {
protected:
    void SetUp() override
    {
        setenv("XDG_CONFIG_HOME", (folder / "config").c_str(), 1);
        fs::create_directory(folder / "work");
    }
    void TearDown() override { unsetenv("XDG_CONFIG_HOME"); }

    // A script for the shell in which `riders` is this build's; what it writes on standard error.
    std::string run(const std::string &script) const
    {
        const CommandResult result =
            runProgram({"sh", "-c", "PATH='" RIDERS_BINARY_DIR "':$PATH\n" + script}, {}, folder / "work");
        EXPECT_EQ(result.status, 0) << result.err;
        return result.err;
    }
    // Runs so many at once, each with a number from 1 as $i.
    std::string runMany(int count, const std::string &line) const
    {
        return run("for i in $(seq " + std::to_string(count) + "); do " + line + " & done; wait");
    }

    // All names in the folder, hidden ones too.
    std::vector<std::string> names(const std::string &of) const
    {
        std::vector<std::string> names;
        for (const fs::directory_entry &entry : fs::directory_iterator(folder / of))
            names.push_back(entry.path().filename());
        std::sort(names.begin(), names.end());
        return names;
    }
    // Every file in the folder with its bytes.
    std::string contentsOfAll(const fs::path &of) const
    {
        std::vector<fs::path> files(fs::recursive_directory_iterator(of), {});
        std::sort(files.begin(), files.end());
        std::string all;
        for (const fs::path &file : files)
            all += file.lexically_relative(of).string() + "\n" + (fs::is_directory(file) ? "" : contentsOf(file));
        return all;
    }

    TemporaryFolder folder;
};

using Names = std::vector<std::string>;

}  // namespace

TEST_F(AtOnce, SettingsSavedByFifty)
{
    EXPECT_EQ(runMany(50, "riders make -o made$i --angle 30 --frequency $((40 + i)) --save-settings"), "");
    EXPECT_EQ(names("config/riders"), (Names{"._Riders Preferences", "Riders Preferences"}));
    EXPECT_EQ(names("work").size(), 50u);
    EXPECT_EQ(run("riders make -o made --angle 45 --save-settings"), "");
}

// The spot function is in one of the two files, whether it is used in the other. No frequency is one of the menu: with
// such a one the last of the user's own stays in the settings, which may be anybody's.
TEST_F(AtOnce, SettingsAreWhollyThoseOfOne)
{
    for (int i = 1; i <= 8; ++i)
        writeFile(folder / ("work/" + std::to_string(i) + ".spot"),
                  "%!KT1_Spot\rpop % " + std::to_string(i) + "\r");
    std::vector<std::string> alone;
    for (int i = 1; i <= 8; ++i) {
        const std::string save = "riders make -o made --save-settings --frequency $((60 + " + std::to_string(i) +
                                 ")).5 --spot " + std::to_string(i) + ".spot";
        EXPECT_EQ(run(save), "");
        alone.push_back(contentsOfAll(folder / "config/riders"));
    }
    EXPECT_EQ(runMany(8, "riders make -o made --save-settings --frequency $((60 + i)).5 --spot $i.spot"), "");
    EXPECT_NE(std::find(alone.begin(), alone.end(), contentsOfAll(folder / "config/riders")), alone.end());
}

TEST_F(AtOnce, MakesOfOneFile)
{
    EXPECT_EQ(run("riders make -o film --frequency 61"), "");
    const std::size_t size = contentsOf(folder / "work/film").size();
    EXPECT_EQ(runMany(20, "riders make -o film --frequency $((61 + i))"), "");
    EXPECT_EQ(contentsOf(folder / "work/film").size(), size);
    EXPECT_TRUE(contentsOf(folder / "work/film").ends_with("%Zu3_RidersEnd\n"));
    EXPECT_EQ(names("work"), Names{"film"});
}

TEST_F(AtOnce, AppliesBesideMakesAlwaysFindAWholeFile)
{
    writeFile(folder / "work/job.ps", "%!PS\nshowpage\n");
    EXPECT_EQ(run("riders make -o film --frequency 61; riders apply film job.ps -o out.ps"), "");
    const std::size_t size = contentsOf(folder / "work/out.ps").size();
    EXPECT_EQ(runMany(10, "riders make -o film --frequency $((61 + i)) & riders apply film job.ps -o out.ps & "
                          "riders apply film job.ps -o out$i.ps"),
              "");
    for (const std::string &name : names("work"))
        EXPECT_TRUE(!name.starts_with("out") || contentsOf(folder / "work" / name).size() == size) << name;
    EXPECT_EQ(names("work").size(), 13u);
}

TEST_F(AtOnce, ProofsInOneFolder)
{
    for (int i = 1; i <= 4; ++i) {
        const std::string number = std::to_string(i);
        writeFile(folder / ("work/" + number + ".ps"), "%!PS\n<</PageSize [72 72]>> setpagedevice\n0." + number +
                                                           " setgray 9 9 40 40 rectfill\nshowpage\n");
        EXPECT_EQ(run("riders proof " + number + ".ps --dpi 300 -o proof >out; mv proof alone" + number), "");
    }
    for (const char *state : {"none there yet", "one to replace"}) {
        EXPECT_EQ(runMany(4, "riders proof $i.ps --dpi 300 -o proof >out"), "") << state;
        int same = 0;
        for (int i = 1; i <= 4; ++i)
            same +=
                contentsOfAll(folder / "work/proof") == contentsOfAll(folder / ("work/alone" + std::to_string(i)));
        EXPECT_EQ(same, 1) << state;
        EXPECT_EQ(names("work").size(), 10u) << state;
    }
}
