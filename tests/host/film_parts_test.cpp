// Small parts of films: names, resolutions, rows, dot shapes, what is said.
#include <cmath>
#include <random>

#include "film/dot_shapes.h"
#include "film/film_made.h"
#include "film/film_names.h"
#include "film/film_rows.h"
#include "film/kept_window.h"
#include "film/progress.h"
#include "film/resolution_text.h"
#include "film/riders_shapes.h"
#include "io/refusal.h"
#include "screens/shapes.h"
#include "support/toolbox_test.h"

namespace {

namespace film = riders::film;
using riders::plates::Place;

using Names = std::vector<std::string>;
using Bits = std::vector<std::uint8_t>;

TEST(FilmNames, SortByPageAndSayThePlate)
{
    EXPECT_EQ(film::filmNames("work/job.ps", 1, 1, {"Cyan", "Black"}, ".tif"),
              (Names{"job_p01_Cyan.tif", "job_p01_Black.tif"}));
    EXPECT_EQ(film::filmNames("job.v2.pdf", 7, 120, {"Cyan"}, ".tif"), Names{"job.v2_p007_Cyan.tif"});
    EXPECT_EQ(film::filmNames("job", 130, 99, {"Cyan"}, ".tif"), Names{"job_p130_Cyan.tif"});
}

TEST(FilmNames, HoldNothingThatMakesTrouble)
{
    EXPECT_EQ(film::filmNames("j.ps", 1, 1,
                              {"PANTONE 300 C", "../../x", "a/b", "a b", "A-B", "\u00e9\u4e2d", "", "-"}, ""),
              (Names{"j_p01_PANTONE-300-C", "j_p01_..-..-x", "j_p01_a-b", "j_p01_a-b-2", "j_p01_A-B-3",
                     "j_p01_ink", "j_p01_ink-2", "j_p01_ink-3"}));
    std::string longName;
    for (int i = 0; i < 120; ++i)
        longName += "\u00e9";
    const std::string name = film::filmNames(longName + ".ps", 1, 1, {std::string(300, 'x')}, ".tif").at(0);
    EXPECT_EQ(name, longName.substr(0, 160) + "_p01_" + std::string(60, 'x') + ".tif");
    EXPECT_EQ(film::filmNames("x" + longName, 1, 1, {"K"}, "").at(0).substr(0, 159),
              ("x" + longName).substr(0, 159));
}

TEST(FilmResolution, IsOneNumberOrTwo)
{
    const auto square = film::resolutionFromText("1200"), other = film::resolutionFromText("1440x720");
    ASSERT_TRUE(square && other);
    EXPECT_EQ(square->across, 1200);
    EXPECT_EQ(square->down, 1200);
    EXPECT_EQ(other->across, 1440);
    EXPECT_EQ(other->down, 720);
    for (const char *wrong : {"", "x", "71", "4801", "720x", "x720", "720x360x180", "720 x 360", "-720", "+720",
                              "1e3", "720.5", "99999999999"})
        EXPECT_FALSE(film::resolutionFromText(wrong)) << wrong;
    EXPECT_TRUE(film::resolutionFromText("72x4800"));
}

bool at(const Bits &bits, std::size_t x)
{
    return bits[x / 8] >> (7 - x % 8) & 1;
}

TEST(FilmRow, IsInvertedAndMirroredPixelByPixel)
{
    std::mt19937 random(5);
    for (std::size_t columns = 1; columns < 70; ++columns) {
        Bits bits((columns + 7) / 8, 0);
        for (std::size_t x = 0; x < columns; ++x)
            bits[x / 8] |= static_cast<std::uint8_t>((random() & 1) << (7 - x % 8));
        Bits mirrored(bits.size()), inverted = bits;
        film::mirrorRow(bits.data(), columns, mirrored.data());
        film::invertRow(inverted.data(), columns);
        for (std::size_t x = 0; x < columns; ++x) {
            EXPECT_EQ(at(mirrored, x), at(bits, columns - 1 - x)) << columns;
            EXPECT_NE(at(inverted, x), at(bits, x)) << columns;
        }
        for (std::size_t x = columns; x < bits.size() * 8; ++x)
            EXPECT_FALSE(at(mirrored, x) || at(inverted, x)) << columns;
    }
}

TEST(FilmPlace, TurnsWithThePage)
{
    const Place place{1, 2, 3, 4};
    const auto expectPlace = [](const Place &is, const Place &expected) {
        EXPECT_EQ(is.left, expected.left);
        EXPECT_EQ(is.top, expected.top);
        EXPECT_EQ(is.width, expected.width);
        EXPECT_EQ(is.height, expected.height);
    };
    expectPlace(film::turned(place, 0, 8, 11), place);
    // Anticlockwise: what was at the right edge is at the top.
    expectPlace(film::turned(place, 90, 8, 11), {2, 4, 4, 3});
    expectPlace(film::turned(place, 180, 8, 11), {4, 5, 3, 4});
    expectPlace(film::turned(place, 270, 8, 11), {5, 1, 4, 3});
}

TEST(FilmDotShape, HasANameInAnyCaseOrIsAFile)
{
    EXPECT_EQ(film::dotShapeNamed("round").name, "Round");
    EXPECT_EQ(film::dotShapeNamed("ELLIPSEA").body, "");
    EXPECT_NE(film::dotShapeNamed("Double").body, "");  // it has no formula here
    TemporaryFolder folder;
    writeFile(folder / "mine.spot", "%!KT1_Spot\rpop");
    EXPECT_EQ(film::dotShapeNamed(folder / "mine.spot").body, "pop");
    EXPECT_THROW(film::dotShapeNamed("roundish"), riders::io::Refusal);
}

// Shapes that have a formula here have the dots of the installed file of that name.
TEST(FilmDotShape, IsTheInstalledOneOfThatName)
{
    const riders::screening::Screen screen{40, 20};
    int tried = 0;
    for (const riders::screens::Shape &installed : riders::screens::installedShapes())
        for (const std::string &name : namesOf(installed)) {
            const film::DotShape shape = film::dotShapeNamed(name);
            if (!shape.body.empty())
                continue;
            const auto formula = film::thresholdsOf(shape, screen, {300, 300}),
                       body = film::thresholdsOf({name, installed.body}, screen, {300, 300});
            for (std::int64_t y = 0; y < 40; ++y)
                for (std::int64_t x = 0; x < 40; ++x)
                    ASSERT_NEAR(formula.rowOf(y)[formula.placeIn(x, y)], body.rowOf(y)[body.placeIn(x, y)], 1)
                        << name << " at " << x << ", " << y;
            ++tried;
        }
    EXPECT_GE(tried, 12);
}

TEST(RidersShapes, AreReadWithThePlateThatTheyAreFor)
{
    const std::string riders = "%!PS\n/riderReadSpot { % -> string\n} def\n"
                               "riderReadSpot abs exch\nriderReadSpot is no other one\n%end-of-dot-shape%\n"
                               "<4379616E> 0 60 riderOnPlate\n"
                               "<4379616E> riderShapeOnPlate pop\n%end-of-dot-shape%\n"
                               "<476F6C64> riderShapeOnPlate exch pop\n%end-of-dot-shape%\n"
                               "not hex riderShapeOnPlate pop\n%end-of-dot-shape%\n"
                               "<476F6C65> riderShapeOnPlate cut off";
    const std::map<std::string, std::string> expected = {
        {"", "abs exch\nriderReadSpot is no other one\n"}, {"Cyan", "pop\n"}, {"Gold", "exch pop\n"}};
    EXPECT_EQ(film::shapesInRiders(riders), expected);
    EXPECT_TRUE(film::shapesInRiders("").empty());
}

film::PlateMade madeAs(double frequency, double angle)
{
    film::PlateMade made;
    made.asked = {60, 15, {"Round", {}}, "you"};
    made.frequency = 60, made.angle = 15;
    made.measured.found = true;
    made.measured.frequency = frequency;
    made.measured.angle = angle;
    return made;
}

TEST(FilmWarnings, AreOfWhatIsNotAsAskedFor)
{
    EXPECT_EQ(film::warningsOf(madeAs(60.1, 15.1)), Names{});
    EXPECT_EQ(film::warningsOf(madeAs(60, 105)), Names{});  // a quarter turn looks the same
    EXPECT_EQ(film::warningsOf(madeAs(60.3, 15)), Names{"60.3 lines per inch on the film, 60 asked for"});
    EXPECT_EQ(film::warningsOf(madeAs(60, 14.8)), Names{"14.8° on the film, 15° asked for"});
    film::PlateMade made = madeAs(60, 105);
    made.measured.lines = true;
    EXPECT_EQ(film::warningsOf(made), Names{"105° on the film, 15° asked for"});
    made = madeAs(60, 15);
    made.measured.shape = "Line";
    EXPECT_EQ(film::warningsOf(made), Names{"dots like Line on the film, Round asked for"});
    made.asked.shape.body = "pop";  // nobody knows what that looks like
    EXPECT_EQ(film::warningsOf(made), Names{});
    made = madeAs(60, 15);
    made.asked.shapeUnknown = true;
    EXPECT_EQ(film::warningsOf(made), Names{"the job has a dot shape of its own; the dots are Round instead: name "
                                            "one with --spot"});
    made = {};
    made.asked = {60, 15, {"Round", {}}, "you"};
    made.frequency = 59, made.angle = 15;  // what was not measured is known from the table
    EXPECT_EQ(film::warningsOf(made), Names{"59 lines per inch on the film, 60 asked for"});
}

TEST(FilmMade, AnglesAreOnThePageAndNearTheOneAskedFor)
{
    riders::plates::MeasuredScreen dots;
    dots.angle = 89.99;
    EXPECT_NEAR(film::uprightAngle(dots, 0, 0), -0.01, 1e-9);
    dots.angle = 15.2;
    EXPECT_NEAR(film::uprightAngle(dots, 0, 105), 105.2, 1e-9);
    EXPECT_NEAR(film::uprightAngle(dots, 90, 15), 15.2, 1e-9);
    dots.lines = true;
    EXPECT_NEAR(film::uprightAngle(dots, 90, 105), 105.2, 1e-9);
    EXPECT_NEAR(film::uprightAngle(dots, 0, 105), 15.2, 1e-9);
}

TEST(FilmProgress, SaysTheTimeToGoOnceItCanBeKnown)
{
    EXPECT_EQ(film::timeToGo(0.5, 1), "");
    EXPECT_EQ(film::timeToGo(0, 10), "");
    EXPECT_EQ(film::timeToGo(0.5, 10), "10 seconds");
    EXPECT_EQ(film::timeToGo(0.99, 10), "1 second");
    EXPECT_EQ(film::timeToGo(0.25, 40), "2 minutes");
    EXPECT_EQ(film::timeToGo(1, 10), "");
}

}  // namespace
