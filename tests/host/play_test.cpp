// `riders play`: scripts, their failures, their traces and pictures.
#include "host/play_fixture.h"
#include "play/play.h"
#include "toolbox/host/picture.h"

namespace {

const char *const makeScript = "start\n"
                               "command 0\n"
                               "choose 4 \"85 lpi\"   # frequency\n"
                               "choose 5 2\n"
                               "press 1\n"
                               "save \"Film Positive\"\n";

}  // namespace

TEST_F(Play, ASessionMakesARidersFile)
{
    CommandResult result = play(makeScript);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(contentsOf(folder / "Film Positive").substr(0, 12), "%!Zu3_Riders");
    EXPECT_NE(contentsOf(folder / "Film Positive").find("85"), std::string::npos);
}

TEST_F(Play, TheTraceSaysWhatHappenedInOrder)
{
    play(makeScript);
    EXPECT_EQ(firstNotTraced({"menu command 0 ", "menu command 1 ", "entry 1/0 -> 0", "dialog 16300 shown",
                              "popup 16136 opened", "popup 16136 gave", "popup 16137 opened", "press ",
                              "dialog 16300 hidden", "dialog 16399 shown", "dialog 16399 closed",
                              "file create \"Film Positive\" -> 0", "file setEOF \"Film Positive\" -> 0",
                              "dialog 16300 closed", "entry 4/0 -> 0"}),
              "")
        << trace();
}

TEST_F(Play, EveryStepDoesWhatItsNameSays)
{
    writeFile(folder / "mine.spot", "%!KT1_Spot\rpop % by rows\r");
    CommandResult result = play("start\n"
                                "about\nkey return\n"
                                "idle\n"
                                "command 0\n"
                                "leave 4\n"
                                "choose 4 \"Other...\"\nclipboard 62.57\nkey v with command\nkey left\n"
                                "key backspace\nkey 3\nkey return\n"
                                "choose 8 3\ntype AB\nkey left with shift\nkey x with command\nkey tab\n"
                                "choose 6 2\nclick 445 305\n"
                                "choose 6 Import...\npress 1\nopen mine.spot\n"
                                "depth 1\nwait 30\n"
                                "press 1 with option shift\ncancel-file\n"
                                "command 0\nfail any 3 -36 onward\npress 1\nsave made\n");
    EXPECT_EQ(result.status, 1) << "every later file call fails, so a message is still open";
    EXPECT_EQ(firstNotTraced({"entry 1/0 -> 0",
                              "dialog 16200 shown",
                              "dialog 16200 hidden",
                              "dialog 16200 closed",
                              "entry 2/0 -> 0",
                              "entry 3/0 -> 0",
                              "dialog 16300 shown",
                              "popup 16136 opened",
                              "popup 16136 gave nothing",
                              "popup 16136 opened",
                              "popup 16136 gave 21",
                              "dialog 16301 shown",
                              "flash \"OK\"",
                              "dialog 16301 closed",
                              "popup 16140 gave 3",
                              "dialog 16302 shown",
                              "popup 16134 gave 2",
                              "press \"OK\"",
                              "dialog 16302 closed",
                              "popup 16138 gave 11",
                              "dialog 16132 shown",
                              "press \"Import\"",
                              "dialog 16401 shown",
                              "press \"Import\"",
                              "file open \"mine.spot\" -> 0",
                              "press \"Make\"",
                              "dialog 16399 shown",
                              "press \"Cancel\"",
                              "dialog 16399 closed",
                              "entry 4/0 -> 0",
                              "dialog 16300 shown",
                              "file write \"made\" 0 bytes -> -36",
                              "dialog 16129 shown"}),
              "")
        << result.err << trace();
    std::string settings = contentsOf(folder / "preferences/._Riders Preferences");
    EXPECT_NE(settings.find("62.37"), std::string::npos) << "pasted, one back, the digit before it replaced";
}

TEST_F(Play, TheAboutBoxIsPlayedLikeAnyOther)
{
    CommandResult result = play("about\nwait 90\npress 5\npicture fallen\npress 5\n"
                                "about\npress 5 with option\npress 4\nkey enter\n"
                                "about\nwait 30\npress 5 with control\nwait 700\npress 6\n");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(
        firstNotTraced({"dialog 16200 shown", "picture \"fallen.png\"", "dialog 16200 closed",
                        "dialog 16200 shown", "dialog 16200 closed", "dialog 17000 shown", "dialog 17000 closed",
                        "entry 2/0 -> 0", "dialog 16200 shown", "dialog 16200 closed", "entry 2/0 -> 0"}),
        "")
        << trace();
}

TEST_F(Play, AFilmIsASheetOfTheFrontDialog)
{
    CommandResult result = play("about\nfilm intro 4\nwait 20\nfilm end\nkey return\n");
    EXPECT_EQ(result.err, "");
    toolbox::Picture sheet = toolbox::readPng(folder / "intro.png");
    EXPECT_EQ(sheet.width, 4 * (250 + 20 + 4)) << "four across";
    EXPECT_EQ(sheet.height, 2 * (156 + 20 + 4)) << "22 steps, every fourth";
    EXPECT_EQ(firstNotTraced({"dialog 16200 shown", "picture \"intro.png\"", "dialog 16200 closed"}), "");
}

TEST_F(Play, AFilmNeedsADialogAndABeginning)
{
    EXPECT_NE(play("film x 1\n").err.find("no dialog is open"), std::string::npos);
    EXPECT_NE(play("about\nfilm end\nkey return\n").err.find("nothing is being filmed"), std::string::npos);
    EXPECT_NE(play("about\nfilm x\nkey return\n").err.find("needs a number"), std::string::npos);
    EXPECT_EQ(play("about\nfilm x 1\nkey return\nabout\nkey return\n").status, 0) << "never ended";
    EXPECT_FALSE(std::filesystem::exists(folder / "x.png"));
}

TEST_F(Play, TheDecimalSeparatorIsTheOneGiven)
{
    const std::string typed = "start\ncommand 0\nchoose 4 Other...\n";
    EXPECT_EQ(play(typed + "type 62,5\nkey return\npress 1\nsave made\n", {"--decimal", ","}).status, 0);
    EXPECT_NE(contentsOf(folder / "made").find("62.5"), std::string::npos) << "PostScript knows the period only";
    std::filesystem::remove_all(folder / "preferences");
    play(typed + "type 62.5\nkey return\n", {"--decimal", ","});
    EXPECT_EQ(firstNotTraced({"dialog 16301 shown", "beep"}), "") << "the period is no key of that field";
}

TEST_F(Play, TheMachineIsTheOneAskedFor)
{
    const std::string script = "start\ncommand 0\npicture settings\nkey escape\n";
    auto picture = [&](std::vector<std::string> options) {
        CommandResult result = play(script, std::move(options));
        EXPECT_EQ(result.status, 0) << result.err;
        return contentsOf(folder / "settings.png");
    };
    const std::string usual = picture({});
    EXPECT_TRUE(picture({"--screen", "640x480x8+512x342x1"}) == usual) << "the second display is another picture";
    EXPECT_FALSE(picture({"--screen", "640x480x1"}) == usual);
    EXPECT_FALSE(picture({"--screen", "800x600x8+512x342x1"}) == usual);
}

// A plug-in whose resources lack something that it needs, beside a copy of the
// program.
TEST_F(Play, AProcessThatEndsEndsTheScript)
{
    const std::filesystem::path built = RIDERS_BINARY_DIR;
    for (const char *file : {"riders", "riders.so"})
        std::filesystem::copy_file(built / file, folder / file);
    writeFile(folder / "bare.res",
              "string 16129 \"Cannot go on.\"\n"
              "dialog 16129 { size 420 164 ; at 110 110 ; hidden ; items 1 }\n"
              "items 1 { button 320 128 80 20 \"OK\" ; user 0 0 0 0 ; text 0 0 0 0 \"^0\" }\n");
    ASSERT_EQ(runProgram({(built / "tools/rescomp/rescomp").string(), "bare.res", "-o", "._riders.so"}, {},
                         folder.path())
                  .status,
              0);
    auto playBare = [&](const std::string &script) {
        writeFile(folder / "session.play", script);
        return runProgram({"./riders", "play", "session.play", "--preferences", "p", "--trace", "trace"}, {},
                          folder.path());
    };
    CommandResult ended = playBare("command 0\npress 1\n");
    EXPECT_EQ(ended.status, 0) << ended.err;
    EXPECT_TRUE(traced("process ended")) << trace();
    EXPECT_EQ(trace().find("entry 4/0"), std::string::npos);
    EXPECT_EQ(playBare("command 0\npress 1\n\nidle\n").err,
              "riders play: session.play:4: the process has ended, and the script goes on: \"Cannot go on.\"\n");
}

TEST_F(Play, WhoIsStuckPassesWordsOnAndLeavesTheFilesInOrder)
{
    const std::string old = "%!Zu3_Riders old";
    std::filesystem::create_directory(folder / "out");
    writeFile(folder / "out" / "film", old);
    const CommandResult result = play("start\ncommand 0\nchoose 4 3\npress 1\nfail rename 2 -36\nsave out/film\n"
                                      "command 0\npress 2\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("session.play:7: dialog 16129 is still open: \""), std::string::npos) << result.err;
    EXPECT_NE(result.err.find("(rename2)\""), std::string::npos) << result.err;
    EXPECT_EQ(contentsOf(folder / "out" / "film"), old);
    const std::filesystem::directory_iterator left(folder / "out");
    EXPECT_EQ(std::distance(begin(left), end(left)), 1) << "no temporary file";
}

TEST_F(Play, WaitingIsSeenInTheCaret)
{
    ASSERT_EQ(
        play("start\ncommand 0\nchoose 4 Other...\ntype 6\npicture one\npicture two\nwait 40\npicture three\n"
             "key escape\nkey escape\n")
            .status,
        0);
    EXPECT_TRUE(contentsOf(folder / "one.png") == contentsOf(folder / "two.png"));
    EXPECT_FALSE(contentsOf(folder / "two.png") == contentsOf(folder / "three.png")) << "it blinks every 32 ticks";
}

TEST_F(Play, CommandVPastesWhateverTheSystem)
{
    const std::string script = "start\ncommand 0\nchoose 4 Other...\nclipboard 62.5\nkey v with command\n"
                               "key return\npress 1\nsave made\n";
    for (const std::vector<std::string> &machine :
         {std::vector<std::string>{"--system-version", "0x0607", "--no-color-quickdraw"}, {}}) {
        CommandResult result = play(script, machine);
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_NE(contentsOf(folder / "made").find("62.5"), std::string::npos);
    }
}

TEST_F(Play, NumbersBeyondTheirRangeAreFoundBeforeAnythingIsDone)
{
    for (const char *step : {"choose 4 99999999999", "choose 4 0", "press 0", "press 40000", "leave -1",
                             "command 70000", "click 70000 1", "wait -1", "fail any 1 -40000", "fail any 0 -36",
                             "fail any 1 0", "depth 3", "save \"\"", "save folder/", "open folder/"}) {
        CommandResult result = play("start\n" + std::string(step) + "\n");
        EXPECT_EQ(result.status, 1) << step;
        EXPECT_EQ(result.err.rfind("riders play: session.play:2: ", 0), 0u) << step << ": " << result.err;
        EXPECT_EQ(trace().find("entry 1/0"), std::string::npos) << step;
    }
}

TEST_F(Play, WhatCannotBeWrittenIsSaidInWords)
{
    writeFile(folder / "file", "");
    EXPECT_EQ(play("start\n", {"--pictures", "file/pictures"}).err,
              "riders play: the folder file/pictures cannot be made: Not a directory\n");
    writeFile(folder / "session.play", "start\n");
    for (const char *trace : {"file/trace", "/dev/full"}) {
        CommandResult result = runRiders({"play", "session.play", "--trace", trace}, {}, folder.path());
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.err, std::string("riders play: the trace ") + trace + " cannot be written\n");
    }
}

TEST_F(Play, TraceIsWrittenOverATraceAndOverNothingElse)
{
    writeFile(folder / "photo", "not a trace");
    writeFile(folder / "session.play", "start\n");
    const auto trace = [this](std::vector<std::string> more) {
        more.insert(more.begin(), {"play", "session.play", "--preferences", "p", "--trace", "photo"});
        return runRiders(more, {}, folder.path());
    };
    EXPECT_EQ(trace({}).err,
              "riders play: photo: exists and is no trace; name another file, or replace it with --force\n");
    EXPECT_EQ(contentsOf(folder / "photo"), "not a trace");
    EXPECT_EQ(trace({"--force"}).status, 0);
    const std::string first = contentsOf(folder / "photo");
    EXPECT_EQ(trace({}).status, 0);
    EXPECT_EQ(contentsOf(folder / "photo"), first);
}

TEST_F(Play, TheSameSessionGivesTheSameTraceTwice)
{
    play(makeScript);
    std::string first = trace();
    std::filesystem::remove(folder / "Film Positive");
    std::filesystem::remove_all(folder / "preferences");
    play(makeScript);
    EXPECT_EQ(trace(), first);
    EXPECT_FALSE(first.empty());
}

TEST_F(Play, AScriptThatEndsWithADialogOpenFailsWithItsLastLine)
{
    CommandResult result = play("start\ncommand 0\nwait 3\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("session.play:3: "), std::string::npos) << result.err;
    EXPECT_NE(result.err.find("16300"), std::string::npos) << result.err;
}

TEST_F(Play, PressingWhatIsNotThereFailsWithTheLine)
{
    CommandResult result = play("start\ncommand 0\n\npress 99\nkey escape\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("session.play:4: "), std::string::npos) << result.err;
}

TEST_F(Play, PressingWithoutADialogFailsWithTheLine)
{
    CommandResult result = play("start\npress 1\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("session.play:2: "), std::string::npos) << result.err;
}

TEST_F(Play, ACommandWhileADialogIsOpenFailsWithTheLine)
{
    CommandResult result = play("start\ncommand 0\ncommand 1\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("session.play:3: "), std::string::npos) << result.err;
}

TEST_F(Play, AFaultInTheScriptIsFoundBeforeAnythingIsDone)
{
    CommandResult result = play(std::string(makeScript) + "frobnicate\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("session.play:7: there is no step \"frobnicate\""), std::string::npos) << result.err;
    EXPECT_FALSE(std::filesystem::exists(folder / "Film Positive"));
    EXPECT_EQ(play("press four\n").err,
              "riders play: session.play:1: press needs an item number from 1 to 32767, not \"four\"\n");
    EXPECT_EQ(play("press 1 2\n").err, "riders play: session.play:1: \"2\" is too much for press\n");
    EXPECT_EQ(play("type \"abc\n").err, "riders play: session.play:1: a quote is not closed\n");
}

TEST_F(Play, EscapeCancelsAndFlashesTheButton)
{
    CommandResult result = play("start\ncommand 0\nkey escape\n");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(traced("flash \"Cancel\"")) << trace();
    EXPECT_TRUE(traced("dialog 16300 closed")) << trace();
}

TEST_F(Play, ReturnMakes)
{
    CommandResult result = play("start\ncommand 0\nkey return\nsave made\n");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(std::filesystem::exists(folder / "made"));
}

TEST_F(Play, DigitsInQuotesAreAMenuItemsText)
{
    EXPECT_EQ(play("start\ncommand 0\nchoose 7 \"3\"\nchoose 7 3\nkey escape\n").status, 0);
    EXPECT_TRUE(traced("popup 16139 gave 6")) << trace();
    EXPECT_TRUE(traced("popup 16139 gave 3")) << trace();
}

TEST_F(Play, APlannedFaultIsReportedInTheDialog)
{
    CommandResult result = play("start\ncommand 0\npress 1\nfail write 1 -34\nsave made\npress 1\n");
    EXPECT_EQ(result.status, 0) << result.err << trace();
    EXPECT_TRUE(traced("string 16137")) << trace();
    EXPECT_FALSE(std::filesystem::exists(folder / "made"));
}

TEST_F(Play, AnExistingFileIsReplacedUnlessItIsToBeKept)
{
    writeFile(folder / "made", "old");
    EXPECT_EQ(play("start\ncommand 0\npress 1\nsave made keep\ncancel-file\n").status, 0);
    EXPECT_EQ(contentsOf(folder / "made"), "old");
    EXPECT_EQ(play("start\ncommand 0\npress 1\nsave made\n").status, 0);
    EXPECT_EQ(contentsOf(folder / "made").substr(0, 12), "%!Zu3_Riders");
}

TEST_F(Play, SavesInAnotherFolderByGoingThere)
{
    std::filesystem::create_directories(folder / "films" / "august");
    CommandResult result = play("start\ncommand 0\npress 1\nsave films/august/positive\n");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(std::filesystem::exists(folder / "films" / "august" / "positive"));
}

TEST_F(Play, PicturesAreTheSameOnEveryRun)
{
    std::string script = "start\ncommand 0\npicture settings\nkey escape\n";
    ASSERT_EQ(play(script, {"--pictures", "first"}).status, 0);
    std::filesystem::remove_all(folder / "preferences");
    ASSERT_EQ(play(script, {"--pictures", "second"}).status, 0);
    std::string first = contentsOf(folder / "first/settings.png");
    EXPECT_EQ(first.substr(1, 3), "PNG");
    EXPECT_EQ(first, contentsOf(folder / "second/settings.png"));
}

TEST_F(Play, TheSmallestHeapsEndInWordsNotInACrash)
{
    for (int heap : {65536, 100000, 200000}) {
        CommandResult result = play("start\ncommand 0\nkey escape\n", {"--heap", std::to_string(heap)});
        EXPECT_TRUE(result.status == 0 || result.status == 1) << heap << ": " << result.status << result.err;
    }
}

TEST_F(Play, WrongUsageExitsWithTwo)
{
    EXPECT_EQ(play("start\n", {"--screen", "640x480"}).status, 2);
    EXPECT_EQ(play("start\n", {"--decimal", "::"}).status, 2);
    EXPECT_EQ(play("start\n", {"--system-version", "seven"}).status, 2);
    EXPECT_EQ(runRiders({"play"}).status, 2);
    EXPECT_EQ(runRiders({"play", "--help"}).status, 0);
}

TEST_F(Play, AScriptThatIsNotThereIsRefusedInWords)
{
    CommandResult result = runRiders({"play", "nothing.play"}, {}, folder.path());
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "riders play: the script nothing.play cannot be read\n");
}

TEST_F(Play, AScriptThatCannotBeReadToItsEndIsRefusedInWords)
{
    for (const char *script : {"/proc/self/mem", "/proc/self"}) {
        CommandResult result = runRiders({"play", script}, {}, folder.path());
        EXPECT_EQ(result.status, 1) << script;
        EXPECT_EQ(result.err, std::string("riders play: the script ") + script + " cannot be read\n");
    }
}
