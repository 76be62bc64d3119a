// What is computed from the values of a dot shape.
#include <algorithm>
#include <cmath>

#include "shapes/dot_pictures.h"
#include "shapes/growth.h"
#include "shapes/page.h"
#include "shapes/trial_words.h"
#include "support/documents.h"
#include "support/toolbox_test.h"

namespace {

using namespace riders::shapes;

std::vector<float> valuesOf(const std::function<double(double x, double y)> &spot)
{
    std::vector<float> values;
    for (int y = 0; y < kSide; ++y)
        for (int x = 0; x < kSide; ++x)
            values.push_back(static_cast<float>(spot(2.0 * x / kSide - 1, 2.0 * y / kSide - 1)));
    return values;
}

double diamond(double x, double y)
{
    return 1 - std::abs(x) - std::abs(y);
}

std::string rowOf(float value)
{
    std::string row = "RidersShape row";
    for (int i = 0; i < kSide; ++i)
        row += " " + std::to_string(value);
    return row;
}

TEST(TrialWords, AreReadShapeByShape)
{
    TrialWords words(3);
    EXPECT_FALSE(words.take("what the shape prints"));
    EXPECT_FALSE(words.take("RidersShape other"));
    for (int i = 0; i < kSide; ++i)
        EXPECT_TRUE(words.take(rowOf(0.5F)));
    EXPECT_TRUE(words.take("RidersShape end"));
    EXPECT_TRUE(words.take("RidersShape fault stack 0 0.5 1"));
    EXPECT_TRUE(words.take("RidersShape fault empty 0 0 0"));
    EXPECT_TRUE(words.take("RidersShape end"));
    EXPECT_EQ(words.current(), 2U);
    EXPECT_EQ(words.trials()[0].problem, "");
    EXPECT_EQ(words.trials()[0].values, std::vector<float>(std::size_t{kSide} * kSide, 0.5F));
    EXPECT_EQ(words.trials()[1].problem, "it leaves 1 value on the stack, and not one, for x = 0, y = 0.5")
        << "the first";
    EXPECT_TRUE(words.trials()[1].values.empty());
    EXPECT_FALSE(words.trials()[2].ended);
    words.take("RidersShape row 1 2 x nan inf 1e99");
    words.take("RidersShape end");
    EXPECT_EQ(words.trials()[2].problem, "it gives values that are not numbers");
    EXPECT_FALSE(words.take("RidersShape end")) << "there are no more";
}

TEST(Growth, InksTheHighestValueFirst)
{
    const std::vector<float> values = valuesOf(diamond);
    const Growth growth = growthOf(values);
    const auto at = [&](int x, int y) {
        return growth[static_cast<std::size_t>(y) * kSide + static_cast<std::size_t>(x)];
    };
    EXPECT_FLOAT_EQ(at(kSide / 2, kSide / 2), 1.0F / (kSide * kSide));
    EXPECT_FLOAT_EQ(at(0, 0), 1);
    EXPECT_NEAR(at(0, kSide / 2), 0.5, 0.01);
    Growth sorted = growth;
    std::sort(sorted.begin(), sorted.end());
    EXPECT_EQ(std::adjacent_find(sorted.begin(), sorted.end()), sorted.end()) << "each has a tint of its own";
}

TEST(Growth, AnAreaOfEqualValuesIsInkedFromOneSide)
{
    const Growth growth = growthOf(valuesOf([](double, double) { return 0.0; }));
    EXPECT_TRUE(std::is_sorted(growth.begin(), growth.end()));
    const Growth lines = growthOf(valuesOf([](double, double y) { return -std::abs(y); }));
    const auto middle = lines.begin() + kSide * kSide / 2;
    EXPECT_FALSE(std::is_sorted(middle, middle + kSide)) << "those of a line are not";
}

TEST(Growth, InkThatSpreadsMakesTintsDarker)
{
    const Growth growth = growthOf(valuesOf(diamond));
    const Growth none = spreadGrowth(growth, 0), some = spreadGrowth(growth, 0.04);
    EXPECT_NEAR(inkWithSpread(none, 0.3), 0.3, 1e-3);
    EXPECT_EQ(inkWithSpread(some, 0), 0);
    EXPECT_EQ(inkWithSpread(some, 1), 1);
    // A square of half the cell's area has four edges, each of 0.707 of the cell's side.
    EXPECT_NEAR(inkWithSpread(some, 0.125), 0.125 + 4 * 0.3536 * 0.04, 0.02);
}

TEST(Growth, DotsJoinWhereTheyTouch)
{
    const auto joining = [](const std::function<double(double, double)> &spot) {
        return joiningOf(growthOf(valuesOf(spot)));
    };
    EXPECT_NEAR(joining(diamond).first, 0.5, 0.01);
    EXPECT_NEAR(joining(diamond).all, 0.5, 0.01);
    const Joining flat = joining([](double x, double y) { return 1 - 0.5 * std::abs(x) - std::abs(y); });
    EXPECT_EQ(flat.direction, "to rows");
    EXPECT_NEAR(flat.first, 0.25, 0.01);
    EXPECT_NEAR(flat.all, 0.75, 0.01);
    EXPECT_EQ(joining([](double x, double y) { return 1 - std::abs(x) - 0.5 * std::abs(y); }).direction,
              "to columns");
    const Joining slanted =
        joining([](double x, double y) { return std::abs(x - y) < 1 ? -std::abs(x - y) : std::abs(x - y) - 2; });
    EXPECT_EQ(slanted.direction, "aslant");
    EXPECT_GT(slanted.all, 0.97);
    const Joining squares = joining([](double x, double y) { return -std::max(std::abs(x), std::abs(y)); });
    EXPECT_GT(squares.first, 0.97);
}

TEST(DotPicture, IsAPngOfTheSizeAskedFor)
{
    const std::string png = dotPicture(growthOf(valuesOf(diamond)), {3, 2, 20, 0.5, 0.5});
    EXPECT_EQ(png.substr(0, 8), "\x89PNG\r\n\x1A\n");
    EXPECT_EQ(png.substr(16, 8), std::string("\0\0\0\x3C\0\0\0\x28", 8));
}

TEST(DotPicture, BecomesAnAddress)
{
    const std::string start = "data:image/png;base64,";
    EXPECT_EQ(asAddress(""), start);
    EXPECT_EQ(asAddress("f"), start + "Zg==");
    EXPECT_EQ(asAddress("fo"), start + "Zm8=");
    EXPECT_EQ(asAddress("foo"), start + "Zm9v");
    EXPECT_EQ(asAddress("\xFF\xFE\xFB"), start + "//77");
}

// A trial permits what a riders file does: resources/ps and host/shapes/trial.ps list the same operators.
TEST(Trial, PermitsTheOperatorsThatARidersFileDoes)
{
    const auto permitted = [](const std::string &text) {
        const std::size_t from = text.find("  /pop /exch"), to = text.find("] {", from);
        return text.substr(from, to - from);
    };
    const std::string ours = permitted(sourceText("host/shapes/trial.ps"));
    EXPECT_GT(ours.size(), 800U);
    EXPECT_EQ(ours, permitted(sourceText("resources/ps/spot_trying.ps")));
}

}  // namespace
