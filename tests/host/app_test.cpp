// The program on a screen, with a scripted user in front of it.
#include "support/command.h"
#include "support/toolbox_test.h"

#include "app/application.h"
#include "toolbox/host/picture.h"
#include "toolbox/host/quit.h"
#include "toolbox/host/user.h"
#include "toolbox/windows.h"

namespace fs = std::filesystem;

namespace {

constexpr const char *program = "\x13";   // the first menu's title, a diamond
enum { settingsDialog = 16300, window = 1000, problem = 1010 };
enum { addButton = 1, closeButton, takeOutButton };

std::string itemText(int16_t item)
{
    int16_t type;
    Handle text;
    Rect box;
    Str255 words;
    GetDItem(FrontWindow(), item, &type, &text, &box);
    GetIText(text, words);
    return plain(words);
}

std::string windowTitle()
{
    Str255 title;
    GetWTitle(FrontWindow(), title);
    return plain(title);
}

class App : public ToolboxTest {
protected:
    void SetUp() override
    {
        configuration.preferencesFolder = folder / "preferences";
        configuration.startFolder = folder.path();
        ToolboxTest::SetUp();
        writeFile(folder / "job.ps", "%!PS-Adobe-3.0\n%%Title: (Poster \\(front\\))\n%%Pages: (atend)\n%%EndComments\n"
                                     "%%Page: 1 1\nshowpage\n%%Trailer\n%%Pages: 7\n%%EOF\n");
        writeFile(folder / "film", "%!Zu3_Riders\n/x 1 def\n");
    }
    // Until the program ends by itself.
    void run(const fs::path &job = {}, std::optional<riders::ScreenSettings> screen = {})
    {
        fs::path built = RIDERS_BINARY_DIR;
        try {
            riders::Application({built / "riders", built / "riders.so", job}, std::move(screen)).run();
        } catch (const toolbox::ScriptError &error) {
            ADD_FAILURE() << error.message;
        }
    }
    void quitByMenu() { user.chooseFromBar("File", "Quit"); }
    void quit()
    {
        user.then([this] { machine.push({.kind = toolbox::Input::Kind::quit}); });
    }
    std::string added() { return contentsOf(folder / "job-riders.ps"); }
    // For those who want to look.
    static void keepPicture(const std::string &name)
    {
        if (const char *place = std::getenv("RIDERS_LOOK"))
            toolbox::writePng(fs::path(place) / (name + ".png"), toolbox::screenPicture(0));
    }

    toolbox::ScriptedUser user{machine};
};

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
        for (char key : {'z', 'x', 'w', 'q'})   // the first three are disabled
            machine.push({.kind = toolbox::Input::Kind::keyDown,
                          .character = static_cast<std::uint8_t>(key),
                          .modifiers = 0x0100});
    });
    run();
    EXPECT_EQ(tracedTimes("menu 129 gave 4"), 1);
    EXPECT_FALSE(traced("gave 1"));
}

TEST_F(App, JobIsShownWithWhatIsKnownOfIt)
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
    user.key("return");   // under the name that is proposed
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

TEST_F(App, RefusalsAreToldInPlainWords)
{
    writeFile(folder / "letter", "Dear printer,\n");
    user.chooseFromBar("File", "Open...");
    user.answerOpen(folder / "letter");
    user.in(problem);
    user.then([this] {
        keepPicture("refusal");
        EXPECT_TRUE(traced("params \"letter: is not a PostScript job"));
    });
    user.press(1);
    user.in(0);
    user.chooseFromBar("File", "Open...");
    user.answerOpen(folder / "job.ps");
    user.in(window);
    user.press(addButton);
    user.in(0);
    user.answerOpen(folder / "letter");
    user.answerSave(folder / "new.ps");
    user.in(problem);
    user.press(1);
    user.in(window);
    user.press(closeButton);
    quitByMenu();
    run();
    EXPECT_FALSE(fs::exists(folder / "new.ps"));
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
    user.then([] {
        EXPECT_EQ(windowTitle(), "second.ps");
    });
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
    riders::ScreenSettings screen{[&] { return full; }, [&](bool wanted) { full = wanted; }, [&] { return bits; },
                                  [&](int wanted) { bits = wanted; }};
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
    run({}, screen);
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

TEST_F(App, JobThatCannotBeReadIsTold)
{
    user.in(problem);
    user.press(1);
    quitByMenu();
    run(folder / "missing.ps");
    EXPECT_TRUE(traced("params \"missing.ps: No such file"));
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
    EXPECT_THROW(riders::Application({built / "riders", folder / "riders.so", {}}, {}).run(), toolbox::ProcessEnded);
}

TEST(NoDisplay, IsToldInOneLine)
{
    CommandResult result = runProgram({"env", "-u", "DISPLAY", "-u", "WAYLAND_DISPLAY",
                                       (fs::path(RIDERS_BINARY_DIR) / "riders").string()});
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
    EXPECT_THROW(riders::Application({folder / "nothing", built / "riders.so", {}}, {}), riders::PluginError);
    EXPECT_THROW(riders::Application({built / "riders", folder / "nothing.so", {}}, {}), riders::PluginError);
}

// --- The wish to quit --------------------------------------------------------

class AppQuit : public App {
protected:
    std::string settings() { return contentsOf(folder / "preferences" / "Riders Preferences"); }
};

TEST_F(AppQuit, EndsTheLoop)
{
    quit();
    run();
    EXPECT_TRUE(toolbox::quitAsked());
}

TEST_F(AppQuit, SettingsDialogIsCancelled)
{
    user.chooseFromBar("Riders", "Make Riders File...");
    user.in(settingsDialog);
    user.choose(4, 3);
    quit();
    run();
    EXPECT_TRUE(traced("flash \"Cancel\""));
    EXPECT_TRUE(traced("dialog 16300 closed"));
    EXPECT_TRUE(traced("entry 4/0 -> 0"));
}

TEST_F(AppQuit, DialogsAreCancelledOneAfterTheOther)
{
    user.chooseFromBar("Riders", "Make Riders File...");
    user.in(settingsDialog);
    user.choose(4, "Other...");
    user.in(16301);
    user.type("x");   // no number: OK would refuse it
    quit();
    run();
    EXPECT_TRUE(traced("quit asks dialog 16301 to cancel"));
    EXPECT_TRUE(traced("quit asks dialog 16300 to cancel"));
    EXPECT_TRUE(traced("entry 4/0 -> 0"));
}

TEST_F(AppQuit, MessageIsConfirmedAndNothingIsMade)
{
    user.chooseFromBar("Riders", "Make Riders File...");
    user.in(settingsDialog);
    for (int popup = 4; popup <= 9; ++popup)
        user.choose(popup, 1);
    user.press(1);   // nothing chosen: a message
    quit();
    run();
    EXPECT_TRUE(traced("dialog 16300 closed"));
    EXPECT_FALSE(traced("quit dropped"));
}

TEST_F(AppQuit, SaveDialogAndItsQuestionAreCancelled)
{
    user.chooseFromBar("Riders", "Make Riders File...");
    user.in(settingsDialog);
    user.choose(4, 3);
    user.press(1);
    user.in(0);
    user.then([] { EXPECT_TRUE(FrontWindow()); });
    user.key("tab");
    user.type("film");
    user.key("return");   // asks before it replaces
    user.in(16403);
    user.then([] { EXPECT_TRUE(FrontWindow()); });
    quit();
    run();
    EXPECT_TRUE(traced("alert 16403 gave 2"));
    EXPECT_EQ(contentsOf(folder / "film"), "%!Zu3_Riders\n/x 1 def\n");
    EXPECT_TRUE(traced("dialog 16300 closed"));
}

TEST_F(AppQuit, RemovalIsCancelled)
{
    user.chooseFromBar("Riders", "Remove Riders File...");
    user.in(0);
    user.then([] { EXPECT_TRUE(FrontWindow()); });
    quit();
    run();
    EXPECT_TRUE(fs::exists(folder / "film"));
    EXPECT_TRUE(traced("entry 4/1 -> 0"));
}

TEST_F(AppQuit, AboutBoxGoes)
{
    user.chooseFromBar(program, "About Riders...");
    user.wait(120);
    quit();
    run();
    EXPECT_TRUE(traced("entry 2/0 -> 0"));
}

TEST_F(AppQuit, CreditsGoToo)
{
    user.chooseFromBar(program, "About Riders...");
    user.press(5, 0x0800);
    user.in(17000);
    user.then([] { EXPECT_TRUE(FrontWindow()); });
    quit();
    run();
    EXPECT_TRUE(traced("dialog 17000 closed"));
}

TEST_F(AppQuit, PopupHeldOpenGivesNothing)
{
    user.chooseFromBar("Riders", "Make Riders File...");
    user.in(settingsDialog);
    user.press(4);   // leaves it open
    quit();
    run();
    EXPECT_TRUE(traced("popup 16136 gave nothing"));
    EXPECT_TRUE(traced("dialog 16300 closed"));
}

TEST_F(AppQuit, JobsWindowCloses)
{
    user.in(window);
    user.press(addButton);
    user.in(0);
    user.then([] { EXPECT_TRUE(FrontWindow()); });
    quit();
    run(folder / "job.ps");
    EXPECT_TRUE(traced("dialog 1000 closed"));
    EXPECT_FALSE(fs::exists(folder / "job-riders.ps"));
}

}  // namespace
