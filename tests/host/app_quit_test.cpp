// The wish to quit, whatever the program is doing.
#include "host/app_fixture.h"
#include "toolbox/host/quit.h"
#include "toolbox/windows.h"

namespace fs = std::filesystem;

namespace {

using namespace app;

class AppQuit : public App {};

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
    user.type("x");  // no number: OK would refuse it
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
    user.press(1);  // nothing chosen: a message
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
    user.key("return");  // asks before it replaces
    user.in(16403);
    user.then([] { EXPECT_TRUE(FrontWindow()); });
    quit();
    run();
    EXPECT_TRUE(traced("alert 16403 gave 2"));
    EXPECT_EQ(contentsOf(folder / "film"), "%!Zu3_Riders\n/x 1 def\n%Zu3_RidersEnd\n");
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

TEST_F(AppQuit, AboutBoxCloses)
{
    user.chooseFromBar(program, "About Riders...");
    user.wait(120);
    quit();
    run();
    EXPECT_TRUE(traced("entry 2/0 -> 0"));
}

TEST_F(AppQuit, CreditsCloseToo)
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
    user.press(4);  // leaves it open
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

TEST_F(AppQuit, MenuPulledDownGivesNothing)
{
    user.then([this] {
        machine.push({.kind = toolbox::Input::Kind::mouseMoved, .where = {10, 137}});
        machine.push({.kind = toolbox::Input::Kind::mouseDown, .where = {10, 137}});
    });
    quit();
    run();
    EXPECT_FALSE(traced("entry 4/0"));
}

TEST_F(AppQuit, DraggingTheJobsWindowEnds)
{
    user.in(window);
    user.then([] { EXPECT_TRUE(FrontWindow()); });
    user.then([this] {
        const Rect frame = (*reinterpret_cast<WindowPeek>(FrontWindow())->strucRgn)->rgnBBox;
        const Point title{static_cast<int16_t>(frame.top + 8), static_cast<int16_t>(frame.left + 60)};
        machine.push({.kind = toolbox::Input::Kind::mouseMoved, .where = title});
        machine.push({.kind = toolbox::Input::Kind::mouseDown, .where = title});
    });
    quit();
    run(folder / "job.ps");
    EXPECT_TRUE(traced("dialog 1000 closed"));
}

TEST_F(AppQuit, ButtonHeldDownIsNotPressed)
{
    user.chooseFromBar("Riders", "Make Riders File...");
    user.in(settingsDialog);
    user.choose(4, 3);
    user.hold(1);
    quit();
    run();
    EXPECT_TRUE(traced("dialog 16300 closed"));
    EXPECT_FALSE(traced("dialog 16399 shown"));
}

TEST_F(AppQuit, ProblemIsConfirmed)
{
    writeFile(folder / "letter", "Dear printer,\n");
    user.chooseFromBar("File", "Open...");
    user.press(allFiles);
    user.answerOpen(folder / "letter");
    user.in(problem);
    user.then([] { EXPECT_TRUE(FrontWindow()); });
    quit();
    run();
    EXPECT_TRUE(traced("alert 1010 gave 1"));
}

}  // namespace
