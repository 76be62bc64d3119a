// A riders file in the window: what it chooses, changed in the dialog or made again.
#include "host/app_fixture.h"

namespace fs = std::filesystem;

namespace {

using namespace app;

enum { firstChoice = 21, againButton = 29, goOn = 1013, note = 1012, saveDialog = 16399 };

class AppRiders : public App {
protected:
    void SetUp() override
    {
        App::SetUp();
        make("film.riders", "--frequency 60 --angle 17.5 --spot cosinedot --annotation 'Proof 3' --size 11 "
                            "--font Courier --error-handler");
    }
    void make(const std::string &name, const std::string &choices)
    {
        ASSERT_EQ(std::system((std::string(RIDERS_BINARY_DIR) + "/riders make -q -o " + (folder / name).string() +
                               " " + choices)
                                  .c_str()),
                  0);
    }
    // Opens the settings of the file that is shown, and makes it anew as it is.
    void changeNothing()
    {
        user.press(takeOutButton);
        user.in(settingsDialog);
        user.press(1);
        user.in(saveDialog);
        user.key("return");
        user.in(16403);
        user.press(1);
        confirmNote();
    }
    void confirmNote()
    {
        user.in(note);
        user.press(1);
        user.in(window);
    }
    void end()
    {
        user.press(closeButton);
        quitByMenu();
    }
};

TEST_F(AppRiders, WhatItChoosesIsListed)
{
    user.in(window);
    user.then([] {
        keepPicture("chooses");
        EXPECT_EQ(itemText(firstChoice), "all plates 60 lpi at 17.5\xA1, CosineDot");
        EXPECT_EQ(itemText(firstChoice + 1), "annotation \"Proof 3\" in Courier, 11 points");
        EXPECT_EQ(itemText(firstChoice + 2), "error handler");
        EXPECT_FALSE(isDimmed(takeOutButton));
        EXPECT_FALSE(isDimmed(againButton));
    });
    end();
    run(folder / "film.riders");
}

TEST_F(AppRiders, DialogOpensOnWhatItChooses)
{
    const std::string before = contentsOf(folder / "film.riders");
    user.in(window);
    changeNothing();
    end();
    run(folder / "film.riders");
    EXPECT_EQ(contentsOf(folder / "film.riders"), before);
}

TEST_F(AppRiders, EveryKindOfChoiceComesBack)
{
    writeFile(folder / "mine.spot", "%!KT1_Spot\rabs exch abs add 1 exch sub");
    const char *const all[] = {"--frequency 45",
                               "--frequency 162.125 --angle 359.5",
                               "--angle 30 --spot ellipse",
                               "--flatness 0.5",
                               "--flatness 1.25",
                               "--annotation 'Caf\u00e9 (\\\\)'",
                               "--error-handler",
                               "--frequency 60 --angle 45 --spot round --plate Cyan:133@15,Line"};
    for (const char *choices : all) {
        make("one.riders", choices);
        const std::string before = contentsOf(folder / "one.riders");
        user.in(window);
        changeNothing();
        end();
        run(folder / "one.riders");
        EXPECT_EQ(contentsOf(folder / "one.riders"), before) << choices;
        restart();
    }
}

TEST_F(AppRiders, WhatIsChangedIsMadeAndTheRestStays)
{
    make("plates.riders", "--frequency 60 --angle 45 --plate Cyan:133@15,Line --plate Gold:@75");
    user.in(window);
    user.chooseFromBar("Riders", "Change...");
    user.in(settingsDialog);
    user.choose(4, 3);
    user.press(1);
    user.in(saveDialog);
    user.key("return");
    user.in(16403);
    user.press(1);
    confirmNote();
    user.then([] {
        EXPECT_EQ(itemText(firstChoice), "Cyan 133 lpi at 15\xA1, Line");
        EXPECT_EQ(itemText(firstChoice + 2), "the rest 25 lpi at 45\xA1");
    });
    end();
    run(folder / "plates.riders");
    make("wanted.riders", "--frequency 25 --angle 45 --plate Cyan:133@15,Line --plate Gold:@75");
    EXPECT_EQ(contentsOf(folder / "plates.riders"), contentsOf(folder / "wanted.riders"));
    EXPECT_FALSE(fs::exists(folder / "preferences/Riders Preferences")) << "the user's choices are others";
}

TEST_F(AppRiders, CancelledChangeLeavesTheFileAlone)
{
    const std::string before = contentsOf(folder / "film.riders");
    const auto written = fs::last_write_time(folder / "film.riders");
    user.in(window);
    user.press(takeOutButton);
    user.in(settingsDialog);
    user.choose(4, 3);
    user.key("escape");
    user.in(window);
    end();
    run(folder / "film.riders");
    EXPECT_EQ(contentsOf(folder / "film.riders"), before);
    EXPECT_EQ(fs::last_write_time(folder / "film.riders"), written);
}

TEST_F(AppRiders, MadeAgainItIsAsThisVersionWritesIt)
{
    const std::string before = contentsOf(folder / "film.riders");
    const std::size_t at = before.find("riderReadSpot");
    writeFile(folder / "film.riders", std::string(before).insert(before.rfind('\n', at) + 1, "% mine\n"));
    fs::permissions(folder / "film.riders", fs::perms(0640));
    user.in(window);
    user.then([] { EXPECT_TRUE(itemText(firstChoice + 3).starts_with("Not as this version")); });
    user.press(againButton);
    user.in(goOn);
    user.then([] { keepPicture("go_on"); });
    user.press(2);
    user.in(window);
    user.chooseFromBar("Riders", "Make Again");
    user.in(goOn);
    user.press(1);
    confirmNote();
    user.then([] { EXPECT_EQ(itemText(firstChoice + 3), ""); });
    end();
    run(folder / "film.riders");
    EXPECT_EQ(contentsOf(folder / "film.riders"), before);
    EXPECT_EQ(fs::status(folder / "film.riders").permissions(), fs::perms(0640));
}

TEST_F(AppRiders, WhatTheDialogCannotHoldIsSaid)
{
    std::string riders = contentsOf(folder / "film.riders");
    riders.replace(riders.find("/riderFrequency 60 def"), 22, "/riderFrequency 1200.5 def");
    writeFile(folder / "film.riders", riders);
    user.in(window);
    user.press(takeOutButton);
    user.in(goOn);
    user.then([this] { EXPECT_TRUE(traced("hold these: the frequency 1200.5. Choose")); });
    user.key("escape");
    user.in(window);
    user.press(takeOutButton);
    user.in(goOn);
    user.key("return");
    user.in(settingsDialog);
    user.key("escape");
    user.in(window);
    end();
    run(folder / "film.riders");
    EXPECT_EQ(contentsOf(folder / "film.riders"), riders);
}

TEST_F(AppRiders, FileThatCannotBeMadeAgainSaysWhy)
{
    std::string riders = contentsOf(folder / "film.riders");
    riders.replace(riders.find("/riderFrequency 60 def"), 22, "/riderFrequency abc def");
    writeFile(folder / "film.riders", riders);
    user.in(window);
    user.press(againButton);
    user.in(goOn);
    user.press(1);
    user.in(problem);
    user.then([this] { EXPECT_TRUE(traced("its frequency is no number")); });
    user.press(1);
    user.in(window);
    end();
    run(folder / "film.riders");
    EXPECT_EQ(contentsOf(folder / "film.riders"), riders);
}

TEST_F(AppRiders, NewOneIsProposedUnderTheJobsName)
{
    user.in(window);
    user.chooseFromBar("Riders", "Make Riders File...");
    user.in(settingsDialog);
    user.choose(4, 3);
    user.press(1);
    user.in(saveDialog);
    user.key("return");
    user.in(1011);
    user.then([this] { EXPECT_TRUE(traced("params \"job.riders was made in ")); });
    user.press(2);
    user.in(window);
    user.chooseFromBar("Riders", "Make Riders File...");
    user.in(settingsDialog);
    user.press(1);
    user.in(saveDialog);
    user.type("other");  // all but the ending is selected
    user.key("return");
    user.in(1011);
    user.press(2);
    user.in(window);
    end();
    run(folder / "job.ps");
    EXPECT_TRUE(fs::exists(folder / "job.riders"));
    EXPECT_TRUE(fs::exists(folder / "other.riders"));
}

}  // namespace
