// `riders make` with a set of screens and single plates, and what it prints; `riders screens`.
#include "support/command.h"
#include "support/toolbox_test.h"

namespace {

class MakeScreens : public ::testing::Test {
protected:
    CommandResult riders(std::vector<std::string> arguments)
    {
        arguments.insert(arguments.begin(),
                         {"env", "XDG_CONFIG_HOME=" + (folder / "config").string(), RIDERS_BINARY_DIR "/riders"});
        return runProgram(arguments, {}, folder.path());
    }
    // What is printed; the refusal where there is one.
    std::string make(std::vector<std::string> options)
    {
        options.insert(options.begin(), {"make", "-o", "made"});
        const CommandResult result = riders(options);
        return result.status == 0 ? result.out : result.err;
    }
    void writeOwnSet(const std::string &name, const std::string &text)
    {
        std::filesystem::create_directories(folder / "config/riders/screens");
        writeFile(folder / "config/riders/screens" / name, text);
    }
    std::string made() const { return contentsOf(folder / "made"); }

    TemporaryFolder folder;
};

constexpr const char *kDuo =
    "name = \"Duo\"\nfrequency = 60\n[plates]\nBlack = { angle = 45 }\nGold = { angle = 75, "
    "shape = \"Line\" }\n";

}  // namespace

TEST_F(MakeScreens, ASetIsNamedOrAFile)
{
    EXPECT_EQ(
        make({"--screens", "flexo"}),
        "made: Cyan 120 lpi at 22.5°, Round; Magenta 120 lpi at 82.5°, Round; Yellow 120 lpi at 7.5°, Round; "
        "Black 120 lpi at 52.5°, Round; the rest 120 lpi at 52.5°, Round\n");
    writeFile(folder / "duo.toml", kDuo);
    EXPECT_EQ(make({"--screens", "duo.toml"}), "made: Black 60 lpi at 45°; Gold 60 lpi at 75°, Line\n");
    writeOwnSet("flexo.toml", kDuo);
    EXPECT_EQ(make({"--screens", "Flexo"}), "made: Black 60 lpi at 45°; Gold 60 lpi at 75°, Line\n");
}

TEST_F(MakeScreens, ASetMayHaveADotShapeBesideItWhereNoDialogFindsIt)
{
    writeOwnSet("mine.toml",
                "name = \"Mine\"\nshape = \"./own.spot\"\n[plates]\nBlack = { angle = 45 }\n\"*\" = {}\n");
    EXPECT_NE(make({"--screens", "mine"}).find("there is no dot shape and no file"), std::string::npos);
    writeFile(folder / "config/riders/screens/own.spot", "%!KT1_Spot\rpop % my own\r");
    EXPECT_NE(make({"--screens", "mine"}).find("made: Black at 45°, "), std::string::npos);
    const size_t once = made().find("% my own");
    ASSERT_NE(once, std::string::npos);
    EXPECT_NE(made().find("% my own", once + 1), std::string::npos);
}

TEST_F(MakeScreens, AnEmptyNameIsNoSetAndNoDotShape)
{
    for (const char *option : {"--screens", "--spot"}) {
        const std::string words = std::string(option) + ": expected a name or a file\n";
        EXPECT_TRUE(make({option, "", "--plate", "Cyan:60"}).starts_with(words)) << option;
        EXPECT_FALSE(std::filesystem::exists(folder / "made")) << option;
    }
}

TEST_F(MakeScreens, ADotShapeOfASetMayHaveAnyName)
{
    for (const char *name : {"settings", "made", "spots", ".hidden"}) {
        writeOwnSet("mine.toml",
                    "name = \"Mine\"\nshape = \"./" + std::string(name) + "\"\n[plates]\n\"*\" = {}\n");
        writeFile(folder / "config/riders/screens" / name, "%!KT1_Spot\rpop % my own\r");
        EXPECT_TRUE(make({"--screens", "mine"}).starts_with("made: ")) << name;
        EXPECT_NE(made().find("% my own"), std::string::npos) << name;
    }
}

TEST_F(MakeScreens, OptionsChangeTheSet)
{
    writeFile(folder / "duo.toml", kDuo);
    EXPECT_EQ(make({"--screens", "duo.toml", "--frequency", "90", "--plate", "Gold:@22.5", "--plate", "Red:45"}),
              "made: Black 90 lpi at 45°; Gold 90 lpi at 22.5°, Line; Red 45 lpi\n");
    EXPECT_EQ(make({"--screens", "duo.toml", "--spot", "square"}),
              "made: Black 60 lpi at 45°, square; Gold 60 lpi at 75°, square\n");
    EXPECT_EQ(make({"--screens", "duo.toml", "--angle", "15"}),
              "riders make: --angle would give all plates of the set one angle; name the plate, as in --plate "
              "Cyan:@15\n");
    EXPECT_EQ(make({"--screens", "duo.toml", "--frequency", "x"}),
              "riders make: expected a frequency from 1 to 999 lines per inch with --frequency, not \"x\"\n");
}

TEST_F(MakeScreens, WhatHoldsForTheRestGoesThroughTheDialogs)
{
    ASSERT_EQ(make({"--frequency", "45", "--angle", "352.5", "--spot", "line"}), "made: 45 lpi at 352.5°, line\n");
    const std::string plain = made();
    ASSERT_EQ(make({"--plate", "*:45@-7.5,line"}), "made: 45 lpi at 352.5°, line\n");
    EXPECT_EQ(made(), plain);
    ASSERT_EQ(make({"--frequency", "45", "--angle", "-7.5", "--spot", "line"}), "made: 45 lpi at 352.5°, line\n");
    EXPECT_EQ(made(), plain);
    ASSERT_EQ(make({"--frequency", "45", "--plate", "*:@22.5", "--plate", "Gold:@75"}),
              "made: Gold at 75°; the rest 45 lpi at 22.5°\n");
    EXPECT_NE(make({"--frequency", "1000", "--plate", "Gold:@75"}).find("from 1 to 999"), std::string::npos);
}

TEST_F(MakeScreens, NothingButPlatesIsARidersFileToo)
{
    ASSERT_EQ(make({"--plate", "Gold:spot-60-75-line"}), "made: Gold 60 lpi at 75°, line\n");
    EXPECT_EQ(made().find("%!Zu3_Riders"), 0u);
    EXPECT_TRUE(made().ends_with("%Zu3_RidersEnd\n"));
    EXPECT_EQ(made().find("% Flatness"), std::string::npos);
    EXPECT_EQ(made().find("1 setflat"), std::string::npos);
    ASSERT_EQ(make({"--plate", "Gold:60", "--flatness", "1"}), "made: Gold 60 lpi; flatness 1\n");
    EXPECT_NE(made().find("1 setflat"), std::string::npos);
}

TEST_F(MakeScreens, TheLineNamesAllThatWasChosen)
{
    EXPECT_EQ(make({"--annotation", "Proof\t3", "--error-handler", "--flatness", "2"}),
              "made: flatness 2; annotation \"Proof 3\"; error handler\n");
    EXPECT_EQ(make({"--annotation", "x", "--font", "Courier", "--size", "9"}),
              "made: annotation \"x\" in Courier, 9 points\n");
    EXPECT_EQ(
        make({"--json", "--annotation", "x", "--font", "Courier", "--size", "9"}),
        "{\"file\": \"made\", \"plates\": [], \"annotation\": \"x\", \"font\": \"Courier\", \"size\": \"9\", "
        "\"errorHandler\": false}\n");
    EXPECT_EQ(
        make({"--json", "--annotation", "Proof\t3", "--plate", "Gold:60@75,Line"}),
        "{\"file\": \"made\", \"plates\": [{\"plate\": \"Gold\", \"frequency\": 60, \"angle\": 75, \"shape\": "
        "\"Line\"}], \"annotation\": \"Proof\\u00093\", \"errorHandler\": false}\n");
}

TEST_F(MakeScreens, ALetterForAProcessInkIsMentioned)
{
    const CommandResult result = riders({"make", "-o", "made", "--plate", "k:45", "--plate", "Gold:60"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "made: k 45 lpi; Gold 60 lpi\n");
    EXPECT_EQ(result.err,
              "riders make: k is taken for a spot ink of that name; the process ink is called Black\n");
    EXPECT_NE(riders({"make", "-o", "made", "--plate", "Process Cyan:45"}).err.find("called Cyan"),
              std::string::npos);
}

TEST_F(MakeScreens, ExplainingSaysWhatIsNotReachedAndWhatIsLeftToTheJob)
{
    const auto has = [](const std::string &text, const std::string &part) {
        return text.find(part) != std::string::npos;
    };
    const std::string fine =
        make({"--frequency", "300", "--angle", "45", "--spot", "round", "--explain", "--dpi", "600"});
    EXPECT_TRUE(has(fine, "\n  all plates 150.0")) << fine;
    EXPECT_TRUE(has(fine, " grey levels; not reached, since a cell has at least 4 pixels a side\n")) << fine;
    EXPECT_FALSE(has(fine, "not chosen"));
    const std::string left = make({"--plate", "Black:@45", "--explain", "--dpi", "600"});
    EXPECT_TRUE(has(left, "\nFrequencies and angles that were not chosen are Ghostscript's own here")) << left;
    EXPECT_FALSE(has(left, "not reached"));
    const std::string rest = make({"--plate", "Black:@45", "--plate", "*:60@75", "--explain", "--dpi", "600"});
    EXPECT_TRUE(has(rest, "\n  the rest ")) << rest;
    EXPECT_FALSE(has(rest, "not chosen")) << "the rest chooses";
    EXPECT_TRUE(has(make({"--frequency", "60", "--angle", "45", "--json", "--explain"}),
                    "{\"plate\": \"*\", \"askedFrequency\": 60, \"askedAngle\": 45, \"frequency\": "));
}

TEST_F(MakeScreens, WhatIsWrongIsRefusedAndLeavesTheFileAsItWas)
{
    writeFile(folder / "made", "%!Zu3_Riders mine");
    writeFile(folder / "bad.toml", "name = \"Bad\"\n[plates]\nCyan = { angel = 15 }\n");
    EXPECT_EQ(make({"--screens", "bad.toml"}),
              "riders make: bad.toml:3:10: there is no key \"angel\" here; the keys are frequency, angle, shape, "
              "factor\n");
    EXPECT_EQ(make({"--screens", "nothing"}),
              "riders make: there is no set of screens and no file \"nothing\"; riders screens lists the sets\n");
    EXPECT_EQ(make({"--screens", "./nothing"}), "riders make: ./nothing: No such file or directory\n");
    EXPECT_EQ(make({"--screens", "", "--frequency", "60"}),
              "--screens: expected a name or a file\nRun with --help for more information.\n");
    EXPECT_EQ(make({"--plate", "Gold"}),
              "riders make: --plate \"Gold\": expected a colon after the plate's name, as in NAME:LPI@ANGLE,SHAPE\n");
    EXPECT_EQ(make({"--plate", "Gold:60,stars"}),
              "riders make: there is no dot shape and no file \"stars\" for Gold; "
              "riders shapes lists the shapes\n");
    EXPECT_EQ(make({"--plate", "Gold:60", "--save-settings"}),
              "riders make: --save-settings has nothing to keep: the screens of single plates are not among the "
              "settings\n");
    EXPECT_EQ(made(), "%!Zu3_Riders mine");
}

TEST_F(MakeScreens, SetsAreListedWithoutThoseThatAreWrong)
{
    writeOwnSet("duo.toml", kDuo);
    EXPECT_EQ(riders({"screens", "duo"}).out,
              "duo: Duo\n  File: " + (folder / "config/riders/screens/duo.toml").string() +
                  "\n  Black 60 lpi at 45°\n  Gold 60 lpi at 75°, Line\n");
    EXPECT_NE(riders({"screens", "duo", "--json"}).out.find("{\"plate\": \"Gold\", \"frequency\": 60"),
              std::string::npos);
    writeOwnSet("bad.toml", "name = 7");
    const CommandResult all = riders({"screens"});
    EXPECT_EQ(all.status, 1);
    EXPECT_EQ(all.err, "riders screens: " + (folder / "config/riders/screens/bad.toml").string() +
                           ":1:8: expected name as a text between quotation marks, of 1 to 1000 bytes and without "
                           "control characters\n");
    for (const char *line : {"duo: Duo\n  Black 60 lpi at 45°\n", "offset: Offset\n  For: Sheet-fed",
                             "  the rest 45 lpi at 22.5°, Ellipse\n"})
        EXPECT_NE(all.out.find(line), std::string::npos) << line;
}

TEST_F(MakeScreens, AFileWithPlatesIsARidersFileForJobsAndThePlugin)
{
    const std::string job = "%!PS-Adobe-3.0\n%%EndComments\n%%Page: 1 1\nshowpage\n%%EOF\n";
    writeFile(folder / "job.ps", job);
    ASSERT_EQ(make({"--screens", "offset"}).substr(0, 11), "made: Cyan ");
    ASSERT_EQ(riders({"apply", "made", "job.ps", "-o", "with.ps"}).err, "");
    EXPECT_NE(contentsOf(folder / "with.ps").find(made()), std::string::npos);
    ASSERT_EQ(riders({"strip", "with.ps", "-o", "without.ps"}).err, "");
    EXPECT_EQ(contentsOf(folder / "without.ps"), job);
    writeFile(folder / "remove.play", "start\ncommand 1\nopen made\n");
    EXPECT_EQ(riders({"play", "remove.play"}).status, 0);
    EXPECT_FALSE(std::filesystem::exists(folder / "made"));
}
