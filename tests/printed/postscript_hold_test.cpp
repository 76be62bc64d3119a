// Whether a riders file's screen stays, whatever the job does, and what it leaves alone.
#include <cmath>

#include "printed/postscript_support.h"

namespace {

constexpr double kDpi = 600;

// A page's tint, as a job paints it.
const std::string kTint = "gsave initgraphics 0.75 setgray 0 0 144 144 rectfill grestore\n";

RidersChoice chosen()
{
    return {.frequency = "47", .angle = "22.5", .spotBody = pieceBytes(16128)};
}

void expectChosenScreen(const Bitmap &page)
{
    const auto measured = measureScreen(page, kDpi);
    EXPECT_NEAR(measured.frequency, 47, 0.3);
    EXPECT_LT(std::abs(std::remainder(measured.angle - 22.5, 90)), 0.5) << measured.angle;
}

struct JobCase {
    const char *name, *text;  // TINT stands for the tint
};
std::ostream &operator<<(std::ostream &out, const JobCase &job)
{
    return out << job.name;
}

class ScreenHolds : public ::testing::TestWithParam<JobCase> {
protected:
    std::string body() const
    {
        std::string text = GetParam().text;
        for (size_t at; (at = text.find("TINT")) != std::string::npos;)
            text.replace(at, 4, kTint);
        return text;
    }
    void run(const std::string &job)
    {
        const auto result = runGhostscript(folder, job, "page%d");
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        EXPECT_EQ(result.output, "");
        for (int page = 1; page == 1 || exists(folder / ("page" + std::to_string(page))); ++page) {
            SCOPED_TRACE(page);
            expectChosenScreen(readBitmap(folder / ("page" + std::to_string(page))));
        }
    }

    TemporaryFolder folder;
};

TEST_P(ScreenHolds, BeforeTheJob)
{
    run(composeRiders(chosen()) + "%!PS\n" + body());
}

TEST_P(ScreenHolds, TwiceTheLaterOneCounts)
{
    run("%!PS\n" + composeRiders({.frequency = "70", .angle = "5", .spotBody = pieceBytes(16130)}) +
        composeRiders(chosen()) + body());
}

INSTANTIATE_TEST_SUITE_P(
    Jobs, ScreenHolds,
    ::testing::Values(
        JobCase{"Plain", "TINT showpage"},
        JobCase{"PageDevice",
                "<< >> setpagedevice TINT showpage << /PageSize [150 150] >> setpagedevice TINT showpage"},
        JobCase{"OperatorItself", "<< >> systemdict /setpagedevice get exec TINT showpage"},
        JobCase{"OwnScreens",
                "/f {80 0 {pop} setscreen} bind def f TINT showpage\n"
                "4 {90 3 {pop}} repeat setcolorscreen TINT showpage\n"
                "<< /HalftoneType 3 /Width 2 /Height 2 /Thresholds (0abc) >> sethalftone TINT showpage"},
        JobCase{"FedBack", "currenthalftone << >> setpagedevice sethalftone currentscreen setscreen\n"
                           "currentcolorscreen setcolorscreen TINT showpage"},
        JobCase{"RestoreBeforeShowpage", "save 40 3 {pop} setscreen TINT restore showpage TINT showpage"},
        JobCase{"OwnPageProcedures",
                "<< /Install {80 0 {pop} setscreen} /BeginPage {pop} /EndPage {exch pop 2 ne} >>\n"
                "setpagedevice TINT showpage TINT showpage"}),
    [](const auto &info) { return std::string(info.param.name); });

std::string outputOf(const std::string &job, const std::string &options = "-sDEVICE=pbmraw -r600 -g60x60")
{
    TemporaryFolder folder;
    const auto result = runGhostscript(folder, job, "page", options);
    EXPECT_EQ(result.exitCode, 0) << result.output << result.errors;
    return result.output;
}

TEST(ScreenKept, WhatWasNotChosenIsTheJobs)
{
    const std::string query = "80 15 {pop} setscreen currentscreen type = = =\n"
                              "<< /HalftoneType 1 /Frequency 33 /Angle 5 /SpotFunction {pop} >> sethalftone\n"
                              "currentscreen type = = =\n";
    EXPECT_EQ(outputOf("%!PS\n" + composeRiders({.frequency = "60"}) + query),
              "arraytype\n15.0\n60.0\narraytype\n5.0\n60.0\n");
    EXPECT_EQ(outputOf("%!PS\n" + composeRiders({.angle = "45"}) + query),
              "arraytype\n45.0\n80.0\narraytype\n45.0\n33.0\n");
}

// In the job's procedures and in those within them, in dictionaries that are in use and in others.
TEST(ScreenKept, EvenWhereTheJobBoundTheOperatorsBefore)
{
    const std::string query = "currentscreen pop = =\n";
    EXPECT_EQ(outputOf("%!PS\n/one {80 30 {pop} setscreen} bind readonly def\n"
                       "true setpacking /two {true {true {70 20 {pop} setscreen} if} if} bind def "
                       "false setpacking\n"
                       "/later 5 dict def later begin /three {4 {60 9 {pop}} repeat setcolorscreen} bind def end\n"
                       "5 dict begin /four {<< /HalftoneType 1 /Frequency 33 /Angle 5 /SpotFunction {pop} >> "
                       "sethalftone} bind def\n" +
                       composeRiders(chosen()) + "one " + query + "two " + query + "later begin three end " +
                       query + "four " + query + "count = countdictstack =\n"),
              "22.5\n47.0\n22.5\n47.0\n22.5\n47.0\n22.5\n47.0\n0\n4\n");
}

// Otherwise it would call itself for ever.
TEST(ScreenKept, OperatorOfTheJobsOwnStillCallsTheInterpreters)
{
    EXPECT_EQ(outputOf("%!PS\n/setscreen {exch 1 add exch setscreen} bind def\n" +
                       composeRiders({.frequency = "47"}) + "80 30 {pop} setscreen currentscreen pop = =\n"),
              "31.0\n47.0\n");
}

TEST(ScreenKept, LaterRidersFileChangesOnlyWhatItChooses)
{
    EXPECT_EQ(outputOf("%!PS\n" + composeRiders(chosen()) + composeRiders({.frequency = "60"}) +
                       composeRiders({.flatness = "3"}) + "currentscreen pop = = currentflat =\n"),
              "22.5\n60.0\n3.0\n");
}

TEST(ScreenKept, FlatnessTouchesNothingElse)
{
    EXPECT_EQ(outputOf("%!PS\n80 3 {pop} setscreen " + composeRiders({.flatness = "3"}) +
                       "currentscreen pop exch = = [/setscreen /sethalftone /setpagedevice /currentscreen]\n"
                       "{load type =} forall << >> setpagedevice currentflat =\n"),
              "80.0\n3.0\noperatortype\noperatortype\noperatortype\noperatortype\n3.0\n");
}

TEST(ScreenKept, OneThatTheDeviceCannotReachIsReported)
{
    const std::string said =
        outputOf("%!PS\n" + composeRiders({.frequency = "999", .angle = "0", .spotBody = pieceBytes(16128)}));
    EXPECT_EQ(said,
              "%%[ riders: 999.0 lines per inch at 0.0 degrees cannot be reached; the nearest is 150.0 ]%%\n");
}

// A dot shape that is not one is reported, and leaves the job its own and the stacks as they were.
class BadSpot : public ::testing::TestWithParam<const char *> {};

TEST_P(BadSpot, LeavesTheJobItsOwn)
{
    const std::string query =
        "count = countdictstack = currentscreen pop = = currenthalftone /SpotFunction get ==\n";
    const std::string screen = "60 30 {pop} setscreen\n";
    const RidersChoice choice = {.frequency = "50", .spotBody = GetParam()};
    EXPECT_EQ(
        outputOf("%!PS\n1 (two)\n" + screen + composeRiders(choice) + query),
        "%%[ riders: the dot shape is empty, fails, or gives what is no spot value; the job keeps its own ]%%\n"
        "2\n3\n30.0\n50.0\n{pop}\n");
}

INSTANTIATE_TEST_SUITE_P(Kinds, BadSpot,
                         ::testing::Values("", " \n", "noSuchOperator", "add 2 add", "2 copy", "pop pop",
                                           "pop pop (x)", "clear", "stop", "exit", "pop pop pop pop 0", "{", "}",
                                           "} def /x {", "(", "pop end", "add 2 div 5 dict begin", "pop 0 div",
                                           "pop 5 dict begin", "pop 9 setlinewidth", "pop quit",
                                           "pop (x) (w) file pop", "pop currentfile closefile", "pop save pop",
                                           "pop showpage", "pop systemdict /quit get exec", "add 1.001 mul 2 div",
                                           "<", "% only a comment"));

TEST(SpotBody, MayBeLongOrInBracketsOfItsOwn)
{
    const std::string query = "currentscreen length = pop pop\n";
    EXPECT_EQ(outputOf("%!PS\n" + composeRiders({.frequency = "50", .spotBody = "{exch pop abs neg}"}) + query),
              "4\n");
    EXPECT_EQ(outputOf("%!PS\n" + composeRiders({.frequency = "50", .spotBody = std::string(60000, ' ') + "pop"}) +
                       query),
              "1\n");
    const std::string said =
        outputOf("%!PS\n" + composeRiders({.spotBody = std::string(200000, ' ') + "pop"}) + "(on) =\n");
    EXPECT_TRUE(said.starts_with("%%[ riders: the dot shape")) << said;
    EXPECT_TRUE(said.ends_with("on\n")) << said;
}

}  // namespace
