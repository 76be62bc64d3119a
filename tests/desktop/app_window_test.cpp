// `riders` in its own window, started and ended as people do.
#include "desktop/display.h"
#include "support/command.h"
#include "support/toolbox_test.h"

namespace fs = std::filesystem;

namespace {

class Program : public ::testing::Test {
protected:
    // Starts riders, waits for its window, and carries out a line of shell in
    // which $window and $riders name both; then waits for riders to end.
    CommandResult with(const std::string &arguments, const std::string &deeds)
    {
        // A shell has what it starts beside itself ignore an interruption.
        const std::string script = "export XDG_CONFIG_HOME=$PWD/config RIDERS_SCALE=1\nenv --default-signal=INT " +
                                   (programs / "riders").string() + " " + arguments + " &\n" +
                                   "riders=$!\n"
                                   "window=$(xdotool search --sync --onlyvisible --pid $riders | tail -1)\n" +
                                   deeds + "\nwait $riders";
        return runProgram({"sh", "-c", script}, {}, folder.path());
    }
    static void expectGoodEnd(const CommandResult &result)
    {
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.err, "");
    }
    bool settingsSaved() const { return fs::exists(folder / "config/riders/Riders Preferences"); }

    // Opens the settings by clicks on the Riders menu and its first item.
    const std::string openSettings = "xdotool mousemove --sync --window $window 137 10 click 1 "
                                     "mousemove --sync --window $window 170 28 click 1";

    desktop::DisplayServer display;
    TemporaryFolder folder;
    fs::path programs = RIDERS_BINARY_DIR;
};

TEST_F(Program, EndsByItsKey)
{
    expectGoodEnd(with("", "xdotool windowfocus --sync $window key ctrl+q"));
}

TEST_F(Program, OpensADialogFromItsMenuByClicks)
{
    expectGoodEnd(with("", "xdotool windowfocus --sync $window; " + openSettings + " key Escape key ctrl+q"));
    EXPECT_TRUE(settingsSaved()) << "the command came to its end";
}

TEST_F(Program, EndsWhenTheSystemAsks)
{
    expectGoodEnd(with("", "kill -TERM $riders"));
    EXPECT_FALSE(settingsSaved());
}

TEST_F(Program, SaysSoWhenThePlugInCannotGoOn)
{
    for (const char *name : {"riders", "._riders", "riders.so", "._riders.so", "riders_desktop.so"})
        fs::copy_file(programs / name, folder / name);
    std::string fork = contentsOf(folder / "._riders.so");
    const std::string dialogs = "DLOG";
    const std::size_t type = fork.rfind(dialogs);   // in the list of types
    ASSERT_NE(type, fork.npos);
    writeFile(folder / "._riders.so", fork.replace(type, dialogs.size(), "none"));
    programs = folder.path();
    const CommandResult result = with("", "xdotool windowfocus --sync $window; " + openSettings + " key Return");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "riders: the plug-in could not go on and ended the program\n");
    EXPECT_FALSE(settingsSaved());
}

// A message from SDL to the window may then arrive after its end.
TEST_F(Program, EndsWellAtASlowDisplay)
{
    display.beSlow();
    for (int i = 0; i < 2; ++i)
        expectGoodEnd(
            with("", "xdotool windowfocus --sync $window; for key in a b c ctrl+q; do xdotool key $key; done"));
}

TEST_F(Program, ShowsTheJobItIsGiven)
{
    writeFile(folder / "job.ps", "%!PS\n");
    expectGoodEnd(with("job.ps", "xdotool windowfocus --sync $window key ctrl+w key ctrl+q"));
}

// With the settings open, and with one of their popups held down.
TEST_F(Program, EndsFromADialogWhenTheSystemAsks)
{
    for (const char *deed : {"kill -TERM $riders", "kill -INT $riders",
                             "xdotool mousemove --window $window 400 190 mousedown 1; sleep 0.2; kill -TERM $riders"})
        expectGoodEnd(with("", "xdotool windowfocus --sync $window; " + openSettings + "; sleep 0.3; " + deed));
    EXPECT_TRUE(settingsSaved()) << "the command came to its end";
}

TEST_F(Program, SaysSoWhenTheDisplayGoesAway)
{
    const CommandResult result =
        with("", "xdotool windowfocus --sync $window; " + openSettings + "; sleep 0.3; kill -KILL " +
                     std::to_string(display.process()));
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "riders: the display has gone away; open dialogs were cancelled\n");
    EXPECT_TRUE(settingsSaved()) << "the command came to its end";
}

}  // namespace
