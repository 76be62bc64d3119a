// The program at work: its menus, its window, its messages.
#include <sys/stat.h>

#include "host/app_fixture.h"
#include "support/command.h"
#include "toolbox/controls.h"
#include "toolbox/dialogs.h"
#include "toolbox/windows.h"

namespace fs = std::filesystem;

namespace {

using namespace app;

TEST_F(App, NumbersForTemporaryNamesCannotBeForeseen)
{
    const std::int32_t always = qd.randSeed;
    std::int32_t seed = always;
    user.then([&] { seed = qd.randSeed; });
    quitByMenu();
    run();
    EXPECT_NE(seed, always);
}

TEST_F(App, SettingsThatAKilledProcessDecidedAreInPlace)
{
    const std::filesystem::path kept = folder / "preferences";
    std::filesystem::create_directories(kept / ".riders-settings");
    writeFile(kept / ".riders-settings" / "Riders Preferences", "pop");
    quitByMenu();
    run();
    EXPECT_EQ(contentsOf(kept / "Riders Preferences"), "pop");
    EXPECT_FALSE(std::filesystem::exists(kept / ".riders-settings"));
}

TEST_F(App, MenuBarHasThePlugInsCommandsUnderTheirHeading)
{
    user.chooseFromBar("Riders", "Make Riders File...");
    user.in(settingsDialog);
    user.press(2);
    user.chooseFromBar("Riders", "Remove Riders File...");
    user.in(0);
    user.cancelFile();
    user.chooseFromBar(program, "About Riders...");
    user.key("return");
    quitByMenu();
    run();
    EXPECT_TRUE(traced("menu command 0 \"Riders\" \"Make Riders File...\""));
    EXPECT_TRUE(traced("dialog 16300 shown"));
    EXPECT_TRUE(traced("entry 4/0 -> 0"));
    EXPECT_TRUE(traced("entry 4/1 -> 0"));
    EXPECT_TRUE(traced("entry 2/0 -> 0"));
    EXPECT_EQ(trace.back(), "menu 129 gave 4");
}

TEST_F(App, TimeWithNothingToDoIsThePlugInsIdleTime)
{
    user.wait(3600);
    quitByMenu();
    run();
    EXPECT_GE(tracedTimes("entry 3/0 -> 0"), 4);
    EXPECT_LE(tracedTimes("entry 3/0 -> 0"), 7) << "and not much of it";
}

TEST_F(App, CommandKeysChoose)
{
    user.then([this] {
        for (char key : {'z', 'x', 'w', 'q'})  // the first three are disabled
            machine.push({.kind = toolbox::Input::Kind::keyDown,
                          .character = static_cast<std::uint8_t>(key),
                          .modifiers = 0x0100});
    });
    run();
    EXPECT_EQ(tracedTimes("menu 129 gave 4"), 1);
    EXPECT_FALSE(traced("gave 1"));
}

TEST_F(App, JobIsShownWithWhatIsKnownAboutIt)
{
    user.chooseFromBar("File", "Open...");
    user.answerOpen(folder / "job.ps");
    user.in(window);
    user.then([] {
        keepPicture("window");
        EXPECT_EQ(windowTitle(), "job.ps");
        std::string shown;
        for (int16_t item : {8, 9, 10})
            shown += itemText(item) + "|";
        EXPECT_EQ(shown, "Poster (front)|7|none|");
    });
    user.press(closeButton);
    quitByMenu();
    run();
    EXPECT_TRUE(traced("dialog 1000 closed"));
}

TEST_F(App, RidersFileIsAddedAndTakenOutAgain)
{
    const std::string before = contentsOf(folder / "job.ps");
    user.in(window);
    user.press(addButton);
    user.in(0);
    user.answerOpen(folder / "film");
    user.then([] { keepPicture("save"); });
    user.key("return");  // under the name that is proposed
    user.in(window);
    user.then([] { keepPicture("added"); });
    user.press(takeOutButton);
    user.in(0);
    user.answerSave(folder / "again.ps");
    user.in(window);
    user.key("escape");
    quitByMenu();
    run(folder / "job.ps");
    EXPECT_NE(added().find("%!Zu3_Riders"), std::string::npos);
    EXPECT_EQ(contentsOf(folder / "again.ps"), before);
    EXPECT_EQ(contentsOf(folder / "job.ps"), before) << "the job itself is never touched";
}

TEST_F(App, TheMenusTitleIsPlainAgainAfterTheCommand)
{
    const auto bar = [] {
        const toolbox::Picture display = toolbox::displayPicture(0);
        return std::vector(display.pixels.begin(), display.pixels.begin() + 20 * display.width);
    };
    std::vector<std::uint32_t> before;
    user.then([&] { before = bar(); });
    user.chooseFromBar("File", "Open...");
    user.cancelFile();
    user.then([&] { EXPECT_EQ(bar(), before); });
    quitByMenu();
    run();
    EXPECT_FALSE(before.empty());
}

TEST_F(App, AJobOffersEitherToAddOrToTakeOut)
{
    user.in(window);
    user.then([] {
        EXPECT_FALSE(isDimmed(addButton));
        EXPECT_TRUE(isDimmed(takeOutButton));
    });
    user.press(addButton);
    user.in(0);
    user.answerOpen(folder / "film");
    user.key("return");
    user.in(window);
    user.then([] {
        EXPECT_TRUE(isDimmed(addButton));
        EXPECT_FALSE(isDimmed(takeOutButton));
    });
    user.key("escape");
    quitByMenu();
    run(folder / "job.ps");
}

TEST_F(App, RefusalsAreShownInPlainWords)
{
    writeFile(folder / "letter", "Dear printer,\n");
    user.chooseFromBar("File", "Open...");
    user.press(allFiles);
    user.answerOpen(folder / "letter");
    user.in(problem);
    user.then([this] {
        keepPicture("refusal");
        EXPECT_TRUE(traced("params \"letter: is neither PostScript nor EPS nor PDF"));
    });
    user.press(1);
    user.in(0);
    user.chooseFromBar("File", "Open...");
    user.answerOpen(folder / "job.ps");
    user.in(window);
    user.press(addButton);
    user.in(0);
    user.press(allFiles);
    user.answerOpen(folder / "letter");
    user.in(problem);
    user.then([this] { EXPECT_TRUE(traced("params \"letter: is not a riders file")) << "before a name is asked for"; });
    user.press(1);
    user.in(window);
    user.press(closeButton);
    quitByMenu();
    run();
}

TEST_F(App, ReplacedFileKeepsItsModeAndLinks)
{
    ASSERT_EQ(chmod((folder / "film").c_str(), 0600), 0);
    fs::create_symlink("film", folder / "link");
    user.chooseFromBar("Riders", "Make Riders File...");
    user.in(settingsDialog);
    user.choose(4, 3);
    user.press(1);
    user.in(0);
    user.answerSave(folder / "link");
    quitByMenu();
    run();
    struct stat status;
    ASSERT_EQ(stat((folder / "film").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_NE(contentsOf(folder / "film").find("/riderFrequency"), std::string::npos);
}

TEST_F(App, SettingsThatCannotBeReadAreSaidInWords)
{
    writeFile(folder / "preferences", "a file, not a folder");
    user.chooseFromBar("Riders", "Make Riders File...");
    user.in(problem);
    user.then([this] { EXPECT_TRUE(traced("params \"your saved settings cannot be read")); });
    user.press(1);
    user.in(settingsDialog);
    user.choose(4, 3);
    user.press(1);
    user.in(0);
    user.answerSave(folder / "made");
    quitByMenu();
    run();
    EXPECT_EQ(contentsOf(folder / "preferences"), "a file, not a folder");
    EXPECT_NE(contentsOf(folder / "made").find("/riderFrequency"), std::string::npos);
}

TEST_F(App, SettingsThatCannotBeSavedAreSaidInWords)
{
    user.chooseFromBar("Riders", "Make Riders File...");
    user.in(settingsDialog);
    user.then([this] {
        fs::remove_all(folder / "preferences");
        writeFile(folder / "preferences", "a file, not a folder");
    });
    user.choose(4, 3);
    user.press(1);
    user.in(0);
    user.answerSave(folder / "made");
    user.in(problem);
    user.then([this] {
        keepPicture("unsaved");
        EXPECT_TRUE(traced("params \"your choices are not saved: "));
    });
    user.press(1);
    user.in(0);
    quitByMenu();
    run();
    EXPECT_EQ(contentsOf(folder / "preferences"), "a file, not a folder");
    EXPECT_NE(contentsOf(folder / "made").find("/riderFrequency"), std::string::npos);
}

TEST_F(App, MenusWorkWhileAJobIsShown)
{
    writeFile(folder / "second.ps", "%!PS\n");
    user.in(window);
    user.then([] { EXPECT_TRUE(FrontWindow()); });
    user.chooseFromBar(program, "About Riders...");
    user.in(0);
    user.key("return");
    user.chooseFromBar("Riders", "Make Riders File...");
    user.in(settingsDialog);
    user.key("escape");
    user.chooseFromBar("File", "Open...");
    user.in(0);
    user.answerOpen(folder / "second.ps");
    user.in(window);
    user.then([] { EXPECT_EQ(windowTitle(), "second.ps"); });
    user.key("w", 0x0100);
    quitByMenu();
    run(folder / "job.ps");
    EXPECT_TRUE(traced("menu 129 gave 2"));
    EXPECT_EQ(tracedTimes("dialog 1000 shown"), 1);
}

TEST_F(App, QuitFromTheMenuClosesTheJobToo)
{
    user.in(window);
    user.then([] { EXPECT_TRUE(FrontWindow()); });
    quitByMenu();
    run(folder / "job.ps");
    EXPECT_TRUE(traced("dialog 1000 closed"));
}

TEST_F(App, ScreenMenuOffersWhatTheMachineDoes)
{
    bool full = false;
    int bits = 8;
    riders::app::DisplaySettings display{[&] { return full; }, [&](bool wanted) { full = wanted; },
                                         [&] { return bits; }, [&](int wanted) { bits = wanted; }};
    user.chooseFromBar("Screen", "Full Screen");
    user.chooseFromBar("Screen", "4 Colors");
    user.then([&] {
        int16_t mark = 0;
        GetItemMark(GetMHandle(132), 1, &mark);
        EXPECT_EQ(mark, 0x12);
    });
    user.chooseFromBar("Screen", "Millions of Colors");
    user.then([] {
        int16_t mark = 0;
        GetItemMark(GetMHandle(132), 4, &mark);
        EXPECT_EQ(mark, 0x12) << "as it was when the menu was last opened";
    });
    quitByMenu();
    run({}, display);
    EXPECT_TRUE(full);
    EXPECT_EQ(bits, 32);
}

TEST_F(App, WithoutThatThereIsNoScreenMenu)
{
    user.then([] { EXPECT_EQ(GetMHandle(132), nullptr); });
    quitByMenu();
    run();
}

TEST_F(App, LongTitleIsCutToItsPlace)
{
    writeFile(folder / "long.ps", "%!PS\n%%Title: " + std::string(200, 'W') + "\n%%Pages: 1\n");
    user.in(window);
    user.then([] {
        int16_t type;
        Handle item;
        Rect box;
        Str255 text;
        GetDItem(FrontWindow(), 8, &type, &item, &box);
        GetIText(item, text);
        SetPort(FrontWindow());
        EXPECT_GT(text[0], 10);
        EXPECT_EQ(text[text[0]], 0xC9);
        EXPECT_LE(StringWidth(text), box.right - box.left);
    });
    user.press(closeButton);
    quitByMenu();
    run(folder / "long.ps");
}

TEST_F(App, JobThatCannotBeReadIsReported)
{
    user.in(problem);
    user.press(1);
    quitByMenu();
    run(folder / "missing.ps");
    EXPECT_TRUE(traced("params \"missing.ps: No such file"));
}

TEST_F(App, PipeIsNotWaitedFor)
{
    ASSERT_EQ(mkfifo((folder / "pipe.ps").c_str(), 0600), 0);
    user.in(problem);
    user.press(1);
    quitByMenu();
    run(folder / "pipe.ps");
    EXPECT_TRUE(traced("params \"pipe.ps: is not a file but a pipe"));
}

TEST_F(App, FolderAndDeviceAreNoJobs)
{
    for (const auto &[job, words] : {std::pair(folder.path(), ": is a folder"),
                                     {fs::path("/dev/zero"), "\"zero: is not a file but a pipe or a device"}}) {
        user.in(problem);
        user.press(1);
        quitByMenu();
        run(job);
        EXPECT_TRUE(traced(words)) << words;
        restart();
    }
}

TEST_F(App, JobOfManyGigabytesIsShownAtOnce)
{
    std::error_code full;
    fs::resize_file(folder / "job.ps", std::uintmax_t(5) << 30, full);
    if (full)
        GTEST_SKIP() << "the file system of the tests has no such files";
    user.in(window);
    user.then([] { EXPECT_EQ(itemText(8), "Poster (front)"); });
    user.press(closeButton);
    quitByMenu();
    run(folder / "job.ps");
}

TEST_F(App, RidersFileThatIsTooLongIsRefused)
{
    writeFile(folder / "film", contentsOf(folder / "film") + std::string(1 << 20, '%'));
    user.in(window);
    user.press(addButton);
    user.in(0);
    user.answerOpen(folder / "film");
    user.answerSave(folder / "new.ps");
    user.in(problem);
    user.press(1);
    user.in(window);
    user.press(closeButton);
    quitByMenu();
    run(folder / "job.ps");
    EXPECT_TRUE(traced("film: is longer than 1 MiB"));
    EXPECT_FALSE(fs::exists(folder / "new.ps"));
}

// With a job open that has since gone, become a pipe, or become something else.
TEST_F(App, WhatBecomesOfTheJobMeanwhileIsReported)
{
    const auto becomes = [this](const std::function<void(const fs::path &)> &change, const std::string &words) {
        const fs::path job = folder / "job.ps";
        writeFile(job, "%!PS\n");
        user.in(window);
        user.press(addButton);
        user.in(0);
        user.answerOpen(folder / "film");
        user.then([=] {
            fs::remove(job);
            change(job);
        });
        user.answerSave(folder / "new.ps");
        user.in(problem);
        user.press(1);
        user.in(window);
        user.press(closeButton);
        quitByMenu();
        run(job);
        EXPECT_TRUE(traced("params \"job.ps: " + words)) << words;
        fs::remove_all(job);
        restart();
    };
    becomes([](const fs::path &) {}, "No such file");
    becomes([](const fs::path &job) { mkfifo(job.c_str(), 0600); }, "is not a file but a pipe");
    becomes([](const fs::path &job) { fs::create_directory(job); }, "is a folder");
    becomes([](const fs::path &job) { writeFile(job, "Dear printer,\n"); }, "is not a PostScript job");
    EXPECT_FALSE(fs::exists(folder / "new.ps"));
}

TEST_F(App, EndOfTheProcessGoesThrough)
{
    fs::path built = RIDERS_BINARY_DIR;
    fs::copy_file(built / "riders.so", folder / "riders.so");
    writeFile(folder / "poor.res", "include \"" RIDERS_SOURCE_DIR "/resources/strings.res\"\n"
                                   "include \"" RIDERS_SOURCE_DIR "/resources/menus.res\"\n");
    CommandResult made = runProgram({(built / "tools/rescomp/rescomp").string(), (folder / "poor.res").string(),
                                     "-o", (folder / "._riders.so").string()});
    ASSERT_EQ(made.err, "");
    user.chooseFromBar("Riders", "Make Riders File...");
    EXPECT_THROW(riders::app::Application({built / "riders", folder / "riders.so", {}}, {}).run(),
                 toolbox::ProcessEnded);
}

TEST(NoDisplay, IsReportedInOneLine)
{
    CommandResult result = runProgram(
        {"env", "-u", "DISPLAY", "-u", "WAYLAND_DISPLAY", (fs::path(RIDERS_BINARY_DIR) / "riders").string()});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err.substr(0, 19), "riders: no display:");
    EXPECT_EQ(result.err.find('\n'), result.err.size() - 1);
    EXPECT_EQ(result.out, "");
}

TEST(NoDisplay, FileThatIsNotThereIsWrongUsage)
{
    EXPECT_EQ(runRiders({"maek"}).status, 2);
}

TEST_F(App, MissingPiecesAreNamed)
{
    fs::path built = RIDERS_BINARY_DIR;
    EXPECT_THROW(riders::app::Application({folder / "nothing", built / "riders.so", {}}, {}),
                 riders::plugin::PluginError);
    EXPECT_THROW(riders::app::Application({built / "riders", folder / "nothing.so", {}}, {}),
                 riders::plugin::PluginError);
}

}  // namespace
