// A screen on a printing mesh, against figures worked by hand; and `riders mesh`, run as a user does.
#include <cmath>
#include <numbers>

#include "screens/mesh.h"
#include "support/command.h"
#include "support/toolbox_test.h"

namespace {

namespace screens = riders::screens;
using riders::screens::OnMesh;
using riders::screens::onMesh;
using riders::screens::perInchFromText;
using Words = std::vector<std::string>;

bool has(const std::string &text, const std::string &part)
{
    return text.find(part) != std::string::npos;
}

TEST(Mesh, ThreadsAreGivenPerInchOrPerCentimetre)
{
    EXPECT_EQ(perInchFromText("225"), 225);
    EXPECT_EQ(perInchFromText("62.5/in"), 62.5);
    EXPECT_NEAR(*perInchFromText("90/cm"), 228.6, 1e-9);
    EXPECT_EQ(perInchFromText("62,5"), 62.5);
    EXPECT_EQ(perInchFromText("62,5/cm"), perInchFromText("62.5/cm"));
    EXPECT_NEAR(*perInchFromText("0.5/cm"), 1.27, 1e-9);
    for (const char *text : {"", " 9", "9 ", "x", "/cm", "9/", "9/c", "9/cmx", "9cm", "9/mm", "0", "-9", "inf",
                             "nan", "1e999", "9/cm/cm", "9,", ",9", "9,5,5"})
        EXPECT_FALSE(perInchFromText(text)) << text;
}

// 45 lines at 22.5° on 110 threads: 2.444 threads a line. The screen's wave (2, 1) is √5 of its frequency long and
// lies 26.565° from its axis, 4.065° from the threads: by the law of cosines 0.2663 is left, 3.755 cells, of
// 25.4 mm / 45.
TEST(Mesh, FortyFiveLinesOnAHundredAndTenThreads)
{
    const OnMesh mesh = onMesh({45, 22.5}, 110);
    EXPECT_NEAR(mesh.ratio, 2.4444, 0.0001);
    EXPECT_NEAR(mesh.nearestThread, 22.5, 1e-9);
    EXPECT_NEAR(mesh.coarsest->millimetres(), 2.1195, 0.0001);
    EXPECT_NEAR(mesh.coarsest->strength, 0.2, 1e-9);
    EXPECT_EQ(screens::adviceFor(mesh), "too few threads; 2.5 a line at the least");
}

// At 0° the fourth wave of 45 lines is 180, eleven threads more than there are.
TEST(Mesh, TheCoarsestPatternIsOfAHigherWave)
{
    EXPECT_NEAR(onMesh({45, 0}, 169).coarsest->frequency, 11, 1e-9);
    EXPECT_NEAR(onMesh({45, 90}, 169).coarsest->frequency, 11, 1e-9);
    // The classical pair at the usual angle: less than at 0°, and finer than with the meshes next to it.
    const double classical = onMesh({45, 22.5}, 169).coarsest->millimetres();
    for (const double threads : {140.0, 156.0, 180.0, 195.0})
        EXPECT_LT(classical, onMesh({45, 22.5}, threads).coarsest->millimetres()) << threads;
}

TEST(Mesh, TheAdviceDependsOnTheThreadsOfALine)
{
    const auto advice = [](double lines, double threads) {
        return screens::adviceFor(onMesh({lines, 22.5}, threads));
    };
    EXPECT_EQ(advice(45, 112), "too few threads; 2.5 a line at the least");
    EXPECT_EQ(advice(45, 112.5), "few threads; the usual advice is 3.75 a line");
    EXPECT_EQ(advice(45, 168), "few threads; the usual advice is 3.75 a line");
    EXPECT_EQ(advice(45, 168.75), "as usually advised");
    EXPECT_EQ(advice(45, 224), "as usually advised");
    EXPECT_EQ(advice(45, 225), "enough for fine work");
}

TEST(Mesh, DoubtsComeWithTheNearestAngleThatHasNone)
{
    EXPECT_EQ(screens::doubtsOf({45, 22.5}, 169), Words{});
    EXPECT_EQ(screens::doubtsOf({45, 7.5}, 169), Words{});
    EXPECT_EQ(screens::doubtsOf({45, 2}, 169), (Words{"the rows lie 2° from the threads", "better at 7.5°"}));
    EXPECT_EQ(screens::doubtsOf({45, 88}, 169), (Words{"the rows lie 2° from the threads", "better at 82.5°"}));
    // (2, 1) is 100.6 per inch long and lies on the threads: 0.6 are left of 100.
    EXPECT_EQ(screens::doubtsOf({45, 26.565}, 100),
              (Words{"a pattern of 40.8 mm may be seen", "better at 24.5°"}));
    EXPECT_EQ(screens::doubtsOf({45, 24.5}, 100), Words{});
    EXPECT_FALSE(screens::doubtsOf({45, 25}, 100).empty());
    // As many threads as lines.
    EXPECT_EQ(screens::doubtsOf({45, 3}, 45)[1], "a pattern of 10.8 mm may be seen");
}

TEST(Mesh, TheCommandListsMeshesForAFrequency)
{
    const CommandResult listed = runRiders({"mesh", "--frequency", "45"});
    EXPECT_EQ(listed.status, 0);
    EXPECT_TRUE(has(listed.out, "Screen at 22.5°")) << listed.out;
    EXPECT_TRUE(has(listed.out, "     45       110    43.3     2.44       2.12  too few threads")) << listed.out;
    EXPECT_TRUE(has(listed.out, "     45       225    88.6     5.00       0.90  enough for fine work\n"));
    EXPECT_FALSE(has(listed.out, "       86  ")) << "below 2 threads a line";
    EXPECT_FALSE(has(listed.out, "      280  ")) << "above 6";
    EXPECT_TRUE(has(runRiders({"mesh", "--frequency", "45", "--angle", "2"}).out, "better at 7.5°\n"));
}

TEST(Mesh, TheCommandListsFrequenciesForAMesh)
{
    const CommandResult listed = runRiders({"mesh", "--threads", "90/cm"});
    EXPECT_TRUE(has(listed.out, "     60     228.6      90     3.81 ")) << listed.out;
    EXPECT_FALSE(has(listed.out, "    120     228.6"));
    const CommandResult one = runRiders({"mesh", "--threads", "110", "--frequency", "120"});
    EXPECT_TRUE(has(one.out, "    120       110    43.3     0.92 ")) << "any pair can be asked for";
}

TEST(Mesh, TheCommandSpeaksJson)
{
    EXPECT_EQ(runRiders({"mesh", "--frequency", "50", "--threads", "125", "--angle", "0", "--json"}).out,
              "[{\"frequency\": 50, \"angle\": 0, \"threads\": 125, \"ratio\": 2.5, "
              "\"advice\": \"few threads; the usual advice is 3.75 a line\", "
              "\"patternMillimetres\": 1.016, \"patternMayBeSeen\": false, "
              "\"doubts\": [\"the rows lie 0° from the threads\", \"better at 7.5°\"]}]\n");
    EXPECT_EQ(runRiders({"mesh", "--frequency", "299", "--json"}).out, "[]\n");
}

TEST(Mesh, TheCommandRefusesWhatItCannotUse)
{
    const CommandResult nothing = runRiders({"mesh"});
    EXPECT_EQ(nothing.status, 2);
    EXPECT_TRUE(has(nothing.err, "--frequency, --threads or both are required\n")) << nothing.err;
    const CommandResult unusual = runRiders({"mesh", "--frequency", "299"});
    EXPECT_EQ(unusual.status, 1);
    EXPECT_TRUE(has(unusual.err, "no usual mesh with 2 to 6 threads a line")) << unusual.err;
    const CommandResult words = runRiders({"mesh", "--threads", "many"});
    EXPECT_EQ(words.status, 2);
    EXPECT_TRUE(has(words.err, "many is not a number of threads, per inch as 225, or 90/cm")) << words.err;
    EXPECT_TRUE(has(runRiders({"mesh", "--frequency", "45lpi"}).err, "of lines, per inch as 45, or 18/cm"));
    EXPECT_TRUE(has(runRiders({"mesh", "--threads", "9"}).err, "9 is not from 10 to 1000 threads per inch"));
    EXPECT_EQ(runRiders({"mesh", "--frequency", "45", "--angle", "nan"}).status, 2);
}

}  // namespace
