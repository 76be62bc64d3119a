// Screens: what the dots on the page are.
#include <cmath>

#include "printed/postscript_support.h"

namespace {

constexpr double kDpi = 600;
const std::string kSpotRefused =
    "%%[ riders: the dot shape is empty, fails, or gives what is no spot value; the job keeps "
    "its own ]%%\n";

std::string tintJob(const std::string &riders, double ink)
{
    return "%!PS\n{} settransfer\n" + riders + std::to_string(1 - ink) +
           " setgray 0 0 144 144 rectfill showpage\n";
}

double angleApart(double one, double other, double period)
{
    return std::abs(std::remainder(one - other, period));
}

// A cell of `side` pixels a side, averaged over the page.
std::vector<double> averageCell(const Bitmap &page, int side)
{
    std::vector<double> cell(side * side);
    const int cells = page.width / side;
    for (int y = 0; y < cells * side; ++y)
        for (int x = 0; x < cells * side; ++x)
            cell[y % side * side + x % side] += page.at(x, y) / double(cells * cells);
    return cell;
}

// The cell that the formula gives, inked from its highest values down; taken at
// the pixels' middles or corners. Pixels of the last value may be inked or not.
constexpr double kEither = -1;
std::vector<double> idealCell(const SpotShape &shape, int side, double ink, double offset)
{
    std::vector<double> value;
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x)
            value.push_back(shape.value(2 * (x + offset) / side - 1, 2 * (y + offset) / side - 1));
    std::vector<double> sorted = value;
    std::sort(sorted.begin(), sorted.end(), std::greater<>());
    const double last = sorted[static_cast<size_t>(std::lround(ink * side * side)) - 1];
    for (double &v : value)
        v = std::abs(v - last) < 1e-6 ? kEither : v > last ? 1 : 0;
    return value;
}

// The correlation of two cells, the ideal one moved; without the pixels where it allows either.
double likenessMoved(const std::vector<double> &cell, const std::vector<double> &ideal, int side, int dx, int dy)
{
    double n = 0, sum1 = 0, sum2 = 0, both = 0, square1 = 0, square2 = 0;
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x) {
            const double a = cell[y * side + x], b = ideal[(y + dy) % side * side + (x + dx) % side];
            if (b == kEither)
                continue;
            n += 1, sum1 += a, sum2 += b;
            both += a * b, square1 += a * a, square2 += b * b;
        }
    return (both - sum1 * sum2 / n) / std::sqrt((square1 - sum1 * sum1 / n) * (square2 - sum2 * sum2 / n));
}

// The best of them over all ways to move the one against the other.
double likenessTo(const SpotShape &shape, const std::vector<double> &cell, int side, double ink)
{
    double best = -1;
    for (double offset : {0.0, 0.5}) {
        const std::vector<double> ideal = idealCell(shape, side, ink, offset);
        for (int dy = 0; dy < side; ++dy)
            for (int dx = 0; dx < side; ++dx)
                best = std::max(best, likenessMoved(cell, ideal, side, dx, dy));
    }
    return best;
}

class PostScriptScreen : public ::testing::Test {
protected:
    Bitmap print(const RidersChoice &choice, double ink = 0.25, const std::string &output = "")
    {
        const auto result = runGhostscript(folder, tintJob(composeRiders(choice), ink), "page.pbm");
        EXPECT_EQ(result.exitCode, 0) << result.output << result.errors;
        EXPECT_EQ(result.output + result.errors, output);
        return readBitmap(folder / "page.pbm");
    }

    TemporaryFolder folder;
};

// Pairs that plain screens reach well at this resolution.
TEST_F(PostScriptScreen, FrequencyAndAngleAreOnThePage)
{
    for (auto [frequency, angle] : {std::pair{"85", "45"}, {"75", "0"}, {"60", "90"}, {"47.43", "18.435"}}) {
        const auto measured = measureScreen(print({.frequency = frequency, .angle = angle}), kDpi);
        EXPECT_NEAR(measured.frequency, std::stod(frequency), 0.01 * std::stod(frequency)) << angle;
        EXPECT_LT(angleApart(measured.angle, std::stod(angle), 90), 0.5) << measured.angle;
    }
}

// Lines have one direction, dots four: this distinguishes 18 degrees from 72 and from 108.
TEST_F(PostScriptScreen, AngleTurnsClockwiseOnTheSheet)
{
    const auto measured =
        measureScreen(print({.frequency = "47.43", .angle = "18.435", .spotBody = pieceBytes(16130)}), kDpi);
    EXPECT_NEAR(measured.frequency, 47.43, 0.5);
    EXPECT_LT(angleApart(measured.angle, 90 + 18.435, 180), 0.5) << measured.angle;
}

TEST_F(PostScriptScreen, FrequencyAloneKeepsTheAngle)
{
    const auto measured = measureScreen(print({.frequency = "85"}), kDpi);
    EXPECT_NEAR(measured.frequency, 85, 1.5);
    EXPECT_LT(angleApart(measured.angle, 45, 90), 1);  // Ghostscript's own for grey
}

TEST_F(PostScriptScreen, EverySpotFunctionGivesItsShape)
{
    const int side = 30;
    for (const SpotShape &chosen : kSpotShapes) {
        std::vector<double> cell[2];
        for (int level : {0, 1})
            cell[level] = averageCell(
                print({.frequency = "20", .angle = "0", .spotBody = pieceBytes(chosen.id)}, level ? 0.7 : 0.3),
                side);
        std::string best;
        double most = -2;
        for (const SpotShape &shape : kSpotShapes) {
            const double low = likenessTo(shape, cell[0], side, 0.3);
            const double high = likenessTo(shape, cell[1], side, 0.7);
            if (low + high > most)
                most = low + high, best = shape.name;
            if (shape.id == chosen.id) {
                EXPECT_GT(low, 0.99) << shape.name;
                EXPECT_GT(high, 0.99) << shape.name;
            }
        }
        EXPECT_EQ(best, chosen.name);
    }
}

TEST_F(PostScriptScreen, EmptySpotBodyLeavesTheDotShape)
{
    const Bitmap own = print({});
    EXPECT_EQ(print({.spotBody = ""}, 0.25, kSpotRefused).ink, own.ink);
    EXPECT_EQ(print({.frequency = "47", .spotBody = ""}, 0.25, kSpotRefused).ink, print({.frequency = "47"}).ink);
}

// The interpreter looks up a name with two slashes as it reads it.
TEST_F(PostScriptScreen, SpotBodyReachesNoOperatorAsItIsRead)
{
    const Bitmap own = print({});
    for (const char *body : {"//showpage exec pop", "//erasepage exec pop", "pop //quit exec"})
        EXPECT_EQ(print({.spotBody = body}, 0.25, kSpotRefused).ink, own.ink) << body;
}

TEST_F(PostScriptScreen, WhatWasNotChosenLeavesTheScreenAlone)
{
    const Bitmap own = print({});
    EXPECT_EQ(print({.flatness = "3"}).ink, own.ink);
    EXPECT_EQ(print({.errorHandler = true}).ink, own.ink);
}

// Prints the kind of spot function, frequency and angle of each plate.
const std::string kPrintScreens = "currentcolorscreen 4 {type 3 1 roll 12 3 roll} repeat 4 {3 1 roll exch =only ( "
                                  ") print =only ( ) print =} repeat\n";

std::string screensAfter(const std::string &before, const RidersChoice &choice)
{
    TemporaryFolder folder;
    const std::string job = "%!PS\n" + before + "\n" + composeRiders(choice) + kPrintScreens;
    const auto result = runGhostscript(folder, job, "page.pbm");
    EXPECT_EQ(result.exitCode, 0) << result.output << result.errors;
    return result.output;
}

TEST(PostScriptPlates, EachKeepsWhatWasNotChosen)
{
    const std::string four = "50 15 {pop} 60 75 {pop} 70 0 {pop} 80 45 {pop} setcolorscreen";
    EXPECT_EQ(screensAfter(four, {}), "arraytype 80.0 45.0\narraytype 70.0 0.0\narraytype 60.0 75.0\n"
                                      "arraytype 50.0 15.0\n");
    EXPECT_EQ(screensAfter(four, {.frequency = "99"}), "arraytype 99.0 45.0\narraytype 99.0 0.0\n"
                                                       "arraytype 99.0 75.0\narraytype 99.0 15.0\n");
    EXPECT_EQ(screensAfter(four, {.angle = "7", .spotBody = pieceBytes(16130)}),
              "arraytype 80.0 7.0\narraytype 70.0 7.0\narraytype 60.0 7.0\narraytype 50.0 7.0\n");
}

std::string fourTimes(const std::string &line)
{
    return line + line + line + line;
}

TEST(PostScriptPlates, SpotFunctionIsFoundInAScreenDictionary)
{
    const std::string one = "<< /HalftoneType 1 /Frequency 50 /Angle 20 /SpotFunction {pop} >>";
    for (const std::string &dictionary : {one, "<< /HalftoneType 5 /Default " + one + " >>"}) {
        EXPECT_EQ(screensAfter(dictionary + " sethalftone", {.angle = "70"}), fourTimes("arraytype 50.0 70.0\n"));
        EXPECT_EQ(screensAfter(dictionary + " sethalftone", {.frequency = "30", .spotBody = ""}),
                  kSpotRefused + fourTimes("arraytype 30.0 20.0\n"));
    }
}

TEST(PostScriptPlates, ScreenCheckGivesAScreenOfThresholdsRoundDots)
{
    const std::string thresholds = "<< /HalftoneType 3 /Width 2 /Height 2 /Thresholds (0abc) >> sethalftone";
    EXPECT_EQ(screensAfter(thresholds, {.frequency = "30"}), fourTimes("arraytype 30.0 0.0\n"));
    // Without it, with an empty body, the thresholds are the dot shape and stay.
    EXPECT_EQ(screensAfter(thresholds, {.frequency = "30", .spotBody = ""}),
              kSpotRefused + fourTimes("dicttype 60.0 0.0\n"));
}

}  // namespace
