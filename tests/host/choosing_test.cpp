// The dots beside the settings dialog: what they are of, where they are, and what is seen.
#include "choosing/sample.h"
#include "host/app_fixture.h"
#include "support/command.h"
#include "toolbox/host/companion.h"

namespace fs = std::filesystem;

namespace {

using namespace app;

enum { dotsWindow = 1030, frequency = 4, angle = 5, shape = 6, makeButton = 1, cancelButton = 2 };

const char *const plainDot = "%!KT1_Spot\rabs exch abs 2 copy add 3 1 roll mul add 2 div 1 exch sub";

class Choosing : public App {
protected:
    void SetUp() override
    {
        configuration.decimalPoint = '.';
        App::SetUp();
        waits = true;
        writeFile(folder / "mine", plainDot);
        setenv("XDG_CACHE_HOME", (folder / "cache").c_str(), 1);
    }
    void TearDown() override
    {
        App::TearDown();
        unsetenv("XDG_CACHE_HOME");
    }
    void openSettings() { user.chooseFromBar("Riders", "Make Riders File..."); }
    void choose(const std::string &lines, const std::string &degrees, const std::string &dots)
    {
        user.choose(frequency, lines);
        user.choose(angle, degrees);
        user.choose(shape, dots);
    }
    void type(int popup, const std::string &value)
    {
        user.choose(popup, "Other...");
        user.type(value);
        user.key("return");
    }
    void import(const std::string &file)
    {
        user.choose(shape, "Import...");
        user.press(1);
        user.answerOpen(folder / file);
    }
    void cancelAndQuit()
    {
        user.press(cancelButton);
        quitByMenu();
        run();
    }
    // The last that was said about dots.
    std::string dots() const
    {
        const auto last = std::find_if(trace.rbegin(), trace.rend(),
                                       [](const std::string &line) { return line.starts_with("dots of"); });
        return last == trace.rend() ? "" : *last;
    }
    std::string place() const
    {
        const auto last = std::find_if(trace.rbegin(), trace.rend(), [](const std::string &line) {
            return line.starts_with("dots at") || line.starts_with("dots hidden");
        });
        return last == trace.rend() ? "" : *last;
    }
    void expectDots(const std::string &line)
    {
        user.wait(2);
        user.then([this, line] { EXPECT_EQ(dots(), line); });
    }
};

TEST_F(Choosing, DotsFollowEachPopup)
{
    openSettings();
    choose("45 lpi", "22.5°", "Round");
    expectDots("dots of \"45 lpi\" \"22.5°\" \"Round\": 45.01 lpi 22.5 degrees at 600 dpi, inked 19.51 50 80.07");
    user.choose(frequency, "100 lpi");
    expectDots(
        "dots of \"100 lpi\" \"22.5°\" \"Round\": 100 lpi 22.5 degrees at 600 dpi, inked 20.21 50.28 79.86");
    user.choose(angle, "75°");
    expectDots("dots of \"100 lpi\" \"75°\" \"Round\": 100 lpi 75 degrees at 600 dpi, inked 19.86 50.56 79.72");
    user.choose(shape, "Line");
    expectDots("dots of \"100 lpi\" \"75°\" \"Line\": 100 lpi 75 degrees at 600 dpi, inked 20 50.42 80");
    cancelAndQuit();
}

TEST_F(Choosing, DotsOfTypedValues)
{
    openSettings();
    choose("45 lpi", "22.5°", "Round");
    type(frequency, "52.5");
    type(angle, "18.4349");
    expectDots(
        "dots of \"52.5 lpi\" \"18.4349°\" \"Round\": 52.5 lpi 18.43 degrees at 600 dpi, inked 20.28 50 80.69");
    cancelAndQuit();
}

TEST_F(Choosing, NumbersWithACommaAreRead)
{
    configuration.decimalPoint = ',';
    restart();
    openSettings();
    choose("45 lpi", "45°", "Round");
    type(frequency, "52,5");
    expectDots("dots of \"52,5 lpi\" \"45°\" \"Round\": 52.51 lpi 45 degrees at 600 dpi, inked 20.56 49.79 80.63");
    cancelAndQuit();
}

TEST_F(Choosing, ImportedDotShapesAreKnownOnceTheyHaveBeenOpened)
{
    openSettings();
    choose("45 lpi", "45°", "Round");
    import("mine");
    expectDots("dots of \"45 lpi\" \"45°\" \"mine\": 45 lpi 45 degrees at 600 dpi, inked 19.65 49.38 79.65");
    user.choose(shape, "Line");
    import("mine");
    expectDots("dots of \"45 lpi\" \"45°\" \"mine\": 45 lpi 45 degrees at 600 dpi, inked 19.65 49.38 79.65");
    cancelAndQuit();
}

// Nor are they those of the shape by that name that comes with the program.
TEST_F(Choosing, DotsOfAnEarlierImportAreNotKnown)
{
    writeFile(folder / "Round", plainDot);
    openSettings();
    import("Round");
    user.press(makeButton);
    user.answerSave(folder / "made");
    quitByMenu();
    run();
    restart();
    openSettings();
    expectDots("dots of \"35 lpi\" \"45°\" \"Round\": none, Its dots are not known here.");
    cancelAndQuit();
}

TEST_F(Choosing, WhatIsLeftToThePrinterIsNotMadeUp)
{
    openSettings();
    choose("Printer's own", "Printer's own", "Printer's own");
    expectDots("dots of \"Printer's own\" \"Printer's own\" \"Printer's own\": none, The printer decides.");
    user.choose(angle, "15°");
    expectDots("dots of \"Printer's own\" \"15°\" \"Printer's own\": 60 lpi 15 degrees at 600 dpi, inked 19.31 "
               "49.44 80.21");
    cancelAndQuit();
}

TEST_F(Choosing, WhatCannotBeMadeIsSaid)
{
    openSettings();
    choose("45 lpi", "45°", "Round");
    type(frequency, "999");
    expectDots("dots of \"999 lpi\" \"45°\" \"Round\": none, 999 lpi cannot be made at 600 dpi");
    cancelAndQuit();
}

TEST_F(Choosing, DotsAreForTheResolutionThatIsLookedAt)
{
    user.in(window);
    user.chooseFromBar("View", "1200 dpi");
    user.in(0);
    openSettings();
    choose("45 lpi", "45°", "Round");
    expectDots("dots of \"45 lpi\" \"45°\" \"Round\": 45 lpi 45 degrees at 1200 dpi, inked 19.76 49.91 79.65");
    user.press(cancelButton);
    user.in(window);
    user.press(closeButton);
    quitByMenu();
    run(folder / "job.ps");
}

TEST_F(Choosing, DotsAreBesideTheDialogAndGoWithIt)
{
    user.resizeDisplay(1024, 768);
    openSettings();
    user.wait(2);
    user.then([this] { EXPECT_EQ(place(), "dots at 719,233 163x279"); });
    user.drag({240, 512}, {240, 800});
    user.wait(2);
    user.then([this] { EXPECT_EQ(place(), "dots at 430,233 163x279"); });
    cancelAndQuit();
}

TEST_F(Choosing, NoDotsWhereThereIsNoRoomForThem)
{
    user.resizeDisplay(640, 480);
    openSettings();
    user.wait(2);
    user.then([this] { EXPECT_EQ(place(), "dots hidden"); });
    user.drag({100, 320}, {100, 200});
    user.wait(2);
    user.then([this] { EXPECT_EQ(place(), "dots at 407,89 163x279"); });
    cancelAndQuit();
}

TEST_F(Choosing, DotsGoWithTheDialogBeforeAFileIsSaved)
{
    user.resizeDisplay(800, 600);
    openSettings();
    choose("45 lpi", "45°", "Round");
    user.press(makeButton);
    user.in(0);
    user.then([this] {
        EXPECT_TRUE(traced("dialog 1030 shown"));
        EXPECT_TRUE(traced("dialog 1030 hidden"));
        EXPECT_FALSE(traced("dialog 1030 closed"));
    });
    user.cancelFile();
    user.then([this] { EXPECT_TRUE(traced("dialog 1030 closed")); });
    quitByMenu();
    run();
}

TEST_F(Choosing, TheDotsAreSeen)
{
    for (const int depth : {1, 32}) {
        restart();
        user.resizeDisplay(800, 600);
        user.setDepth(depth);
        openSettings();
        choose("45 lpi", "45°", "Round");
        user.wait(3);
        user.then([this] {
            keepPicture("choosing");
            WindowPtr dots = reinterpret_cast<WindowPtr>(reinterpret_cast<WindowPeek>(FrontWindow())->nextWindow);
            SetPort(dots);
            Point corner{0, 0};
            LocalToGlobal(&corner);
            const toolbox::Picture shown = toolbox::displayPicture(0);
            const auto dark = [&](int left, int top, int width, int height) {
                int count = 0;
                for (int v = top; v < top + height; ++v)
                    for (int h = left; h < left + width; ++h)
                        count +=
                            shown.pixels[static_cast<std::size_t>((corner.v + v) * shown.width + corner.h + h)] ==
                            0;
                return 100.0 * count / (width * height);
            };
            EXPECT_NEAR(dark(8, 87, 120, 48), 20, 3);
            EXPECT_NEAR(dark(8, 139, 120, 48), 50, 3);
            EXPECT_NEAR(dark(8, 191, 120, 48), 80, 3);
            EXPECT_LT(dark(10, 47, 20, 30), 15);
            EXPECT_GT(dark(128, 47, 20, 30), 85);
            SetPort(FrontWindow());
        });
        user.press(cancelButton);
        quitByMenu();
        run();
    }
}

}  // namespace
