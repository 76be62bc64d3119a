// `riders shapes`, run as a user does.
#include "shapes/growth.h"
#include "shapes/try_shapes.h"
#include "support/command.h"
#include "support/toolbox_test.h"

namespace {

class ShapesCommand : public ::testing::Test {
protected:
    CommandResult shapes(std::vector<std::string> arguments)
    {
        arguments.insert(arguments.begin(), "shapes");
        return runRiders(arguments, {}, folder.path());
    }

    std::string page(const std::string &name = "shapes.html") const { return contentsOf(folder / name); }

    TemporaryFolder folder;
};

int timesIn(const std::string &text, const std::string &part)
{
    int times = 0;
    for (std::size_t at = 0; (at = text.find(part, at)) != text.npos; at += part.size())
        ++times;
    return times;
}

TEST_F(ShapesCommand, ListsThemWithTheNamesThatCommandsKnow)
{
    const CommandResult result = shapes({});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(timesIn(result.out, "\n"), 22);
    EXPECT_NE(result.out.find("\nSimpleDot, Round  "), std::string::npos);
    EXPECT_NE(result.out.find(
                  "\nEuclidean          round dots up to 50 %, round holes above; PostScript calls it Round\n"),
              std::string::npos);
    EXPECT_NE(result.out.find("\nThe files are in " RIDERS_BINARY_DIR "/shapes\n"), std::string::npos);
    const CommandResult json = shapes({"--json"});
    EXPECT_EQ(json.status, 0) << json.err;
    EXPECT_NE(
        json.out.find("{\"names\": [\"Euclidean\"], \"about\": \"round dots up to 50 %, round holes above\", "
                      "\"file\": \"" RIDERS_BINARY_DIR "/shapes/Round\"}"),
        std::string::npos)
        << json.out;
}

TEST_F(ShapesCommand, ShowsAllOnAPage)
{
    const CommandResult result = shapes({"--page"});
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out + result.err, "shapes.html\n");
    EXPECT_EQ(timesIn(page(), "<section"), 21);
    EXPECT_EQ(timesIn(page(), "<figure>"), 21 * 5);
    EXPECT_EQ(timesIn(page(), "class=\"strip\""), 21);
    EXPECT_EQ(timesIn(page(), "class=\"tone\""), 21);
    EXPECT_EQ(page().find("{{"), std::string::npos);
    EXPECT_NE(page().find("<h2>SimpleDot, Round</h2>"), std::string::npos);
    EXPECT_NE(page().find("PostScript calls it Round"), std::string::npos);
    EXPECT_NE(page().find("The dots join to rows at 38 %, all at 63 %."), std::string::npos);
}

TEST_F(ShapesCommand, TriesOneByNameOrFromAFile)
{
    EXPECT_EQ(shapes({"ROUND"}).out, "Round-shape.html\n");
    EXPECT_NE(page("Round-shape.html").find("<title>The dot shape Round</title>"), std::string::npos);
    writeFile(folder / "my <b>.spot", "%!KT1_Spot\r% like <i>this</i>\nabs exch abs add 1 exch sub");
    const CommandResult result = shapes({"my <b>.spot", "-o", "other.html", "--json"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "{\"works\": true, \"problem\": null, \"notes\": [], \"page\": \"other.html\"}\n");
    EXPECT_NE(page("other.html").find("<h2>my &lt;b&gt;.spot</h2>"), std::string::npos);
    EXPECT_NE(page("other.html").find("like &lt;i&gt;this&lt;/i&gt;"), std::string::npos);
}

// What is wrong with each body, or else what is noted on it; all tried in one run, so one that is wrong does not
// harm the next.
std::vector<std::string> saidOf(const std::vector<std::pair<std::string, std::string>> &cases)
{
    std::vector<riders::screens::Shape> bodies;
    for (const auto &[body, words] : cases)
        bodies.push_back({{}, body, {}});
    std::vector<std::string> said;
    for (const riders::shapes::ShapeTrial &trial : riders::shapes::tryShapes(bodies)) {
        EXPECT_TRUE(trial.ended);
        said.push_back(trial.problem);
        if (trial.problem.empty())
            for (const std::string &note : riders::shapes::notesOn(trial.values))
                said.back() += note;
    }
    return said;
}

void expectSaid(const std::vector<std::pair<std::string, std::string>> &cases)
{
    const std::vector<std::string> said = saidOf(cases);
    for (std::size_t i = 0; i < cases.size(); ++i)
        EXPECT_EQ(said[i], cases[i].second) << cases[i].first;
}

TEST(ShapesTried, WhatIsWrongIsSaid)
{
    const std::string corner = " for x = -1.0, y = -1.0";
    const std::string partner = "a brace, bracket or parenthesis in it has no partner (syntaxerror)";
    const std::string only = ", which does not calculate; a dot shape may use only operators that do";
    expectSaid({{"% only words", "it is empty"},
                {"pop }", partner},
                {"{pop", partner},
                {"pop (", partner},
                {"pop } {", "it has a closing brace too many"},
                {"pop //nosuch", "it cannot be read as PostScript (undefined)"},
                {"nosuch", "it fails (undefined)" + corner},
                {"pop 0.5 sub sqrt", "it fails (rangecheck)" + corner},
                {"exit", "it fails (invalidexit)" + corner},
                {"stop", "it fails (stop)" + corner},
                {"{1 dict begin} loop", "it fails (dictstackoverflow)" + corner},
                {"{2 copy} loop", "it fails (stackoverflow)" + corner},
                {"/f {f 1} def f", "it fails (execstackoverflow)" + corner},
                {"add add", "it takes more from the stack than x and y (stackunderflow)," + corner},
                {"dup", "it leaves 3 values on the stack, and not one," + corner},
                {"pop pop", "it leaves 0 values on the stack, and not one," + corner},
                {"clear 1 pop", "it leaves 0 values on the stack, and not one," + corner},
                {"pop pop true", "it leaves what is no number (booleantype)" + corner},
                {"add 0.51 mul", "it gives -1.02" + corner + ", and not a number from -1 to 1"},
                {"pop 0.01 add", "it gives 1.01 for x = 1.0, y = -1.0, and not a number from -1 to 1"},
                {"pop 1 dict begin", "it leaves the dictionary stack other than it was," + corner},
                {"pop showpage", "it uses showpage" + only},
                {"pop //showpage exec", "it uses showpage" + only},
                {"pop (mine) (w) file pop", "it uses file" + only},
                {"end pop showpage", "it uses showpage" + only},
                {"pop quit", "it uses quit" + only}});
}

TEST(ShapesTried, WhatIsWorthKnowingIsNoted)
{
    expectSaid(
        {{"abs exch abs add 1 exch sub", ""},
         {"{abs exch abs add 1 exch sub}", ""},
         {"pop pop 0", "all its values are equal: it gives no dots"},
         {"abs exch abs add 0.7 lt {0.5} {-0.5} ifelse",
          "76 % of the cell has one value: from 24 % to 100 % of ink it does not say where the dot grows"},
         {"pop abs 40 mul round 40 div neg",
          "it gives only 41 different values: it does not say where the dot grows from one to the next"},
         {"pop", "it is not symmetric: its left and right halves differ, so the dots grow to one side"},
         {"exch pop", "it is not symmetric: its upper and lower halves differ, so the dots grow to one side"},
         {"mul", "it is not symmetric: its halves are the same only when turned by 180 degrees"},
         {"0.3 mul add 2 div", "it is not symmetric: all its quarters differ"},
         {"(garbage) print 2 copy = = pop", "it uses =only, which does not calculate; a dot shape may use "
                                            "only operators that do"},
         {"(RidersShape end) print pop", "it is not symmetric: its left and right halves differ, so the dots "
                                         "grow to one side"}});
}

TEST_F(ShapesCommand, OneThatDoesNotEndIsEnded)
{
    writeFile(folder / "mine", "%!KT1_Spot\r{} loop");
    const CommandResult result = shapes({"mine", "--seconds", "1"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "riders shapes: mine: it does not end, or takes more than 1 seconds\n");
    EXPECT_FALSE(std::filesystem::exists(folder / "mine-shape.html"));
}

TEST_F(ShapesCommand, NotesAreToldBesideThePage)
{
    const CommandResult result = shapes({"LineX"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "LineX-shape.html\n");
    EXPECT_EQ(result.err,
              "riders shapes: it is not symmetric: its left and right halves differ, so the dots grow to "
              "one side\n");
}

TEST_F(ShapesCommand, AProblemInJson)
{
    writeFile(folder / "mine", "%!KT1_Spot\rdup");
    const CommandResult result = shapes({"mine", "--json"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out,
              "{\"works\": false, \"problem\": \"mine: it leaves 3 values on the stack, and not one, for "
              "x = -1.0, y = -1.0\", \"notes\": [], \"page\": null}\n");
}

TEST_F(ShapesCommand, ReplacesNothingButAnEarlierPage)
{
    ASSERT_EQ(shapes({"Line", "-o", "page"}).status, 0);
    const std::string line = page("page");
    ASSERT_EQ(shapes({"Cross", "-o", "page"}).status, 0);
    EXPECT_NE(page("page"), line);
    writeFile(folder / "job.ps", "%!PS\nshowpage\n");
    const CommandResult refused = shapes({"Line", "-o", "job.ps"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.err, "riders shapes: job.ps: exists and is no page of dot shapes; name another with -o\n");
    EXPECT_EQ(page("job.ps"), "%!PS\nshowpage\n");
    EXPECT_EQ(shapes({"Line", "-o", "."}).err, "riders shapes: . is a folder; name a file with -o\n");
    EXPECT_EQ(shapes({"nosuch"}).err,
              "riders shapes: there is no dot shape and no file \"nosuch\"; riders shapes lists the dot shapes\n");
    writeFile(folder / "mine", "pop");
    EXPECT_EQ(shapes({"mine"}).err,
              "riders shapes: mine is no spot function file: its first line does not hold %!KT1_Spot\n");
    EXPECT_EQ(shapes({"Line", "--seconds", "0"}).status, 2);
}

}  // namespace
