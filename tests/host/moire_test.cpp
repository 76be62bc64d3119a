// The patterns between screens, against figures worked by hand.
#include <cmath>
#include <numbers>

#include "screens/moire.h"
#include "screens/moire_remedy.h"
#include "support/toolbox_test.h"

namespace {

using riders::screens::Change;
using riders::screens::Grid;
using riders::screens::GridKind;
using riders::screens::kRosettePeriod;
using riders::screens::NamedScreen;
using riders::screens::Order;
using riders::screens::Pattern;
using riders::screens::patternBetween;
using riders::screens::patternsOf;
using riders::screens::Remedy;
using riders::screens::remedyFor;
using riders::screens::shareGrid;

using Orders = std::vector<Order>;

double sine(double degrees)
{
    return std::sin(degrees * std::numbers::pi / 180);
}

std::vector<NamedScreen> offset(double lpi)
{
    return {{"Cyan", {lpi, 15}}, {"Magenta", {lpi, 75}}, {"Yellow", {lpi, 0}, true}, {"Black", {lpi, 45}}};
}

std::string changesOf(const Remedy &remedy, const std::vector<NamedScreen> &screens)
{
    std::ostringstream text;
    for (const Change &change : remedy.changes) {
        text << screens[change.screen].name;
        if (change.frequency)
            text << " " << *change.frequency << " lpi";
        if (change.angle)
            text << " " << *change.angle << " degrees";
        text << "; ";
    }
    return text.str() + (remedy.complete ? "done" : "not all");
}

// As they are after the remedy.
std::vector<NamedScreen> remedied(std::vector<NamedScreen> screens)
{
    for (const Change &change : remedyFor(screens).changes) {
        Grid &grid = screens[change.screen].grid;
        grid.frequency = change.frequency.value_or(grid.frequency);
        grid.angle = change.angle.value_or(grid.angle);
    }
    return screens;
}

// 133 lines per inch: a cell is 25.4 mm / 133 = 0.19098 mm. Cyan and black, 30 degrees apart, make the rosette's
// own: cell / (2 sin 15°) = 0.3689 mm. Yellow is 15 degrees from cyan: cell / (2 sin 7.5°) = 0.7316 mm.
TEST(Moire, TheOffsetSetHasItsRosetteAndYellowsPattern)
{
    const std::vector<NamedScreen> screens = offset(133);
    for (const Pattern &pattern : patternsOf(screens)) {
        if (pattern.grids == std::vector<size_t>{0, 3} || pattern.grids == std::vector<size_t>{0, 1} ||
            pattern.grids == std::vector<size_t>{1, 3}) {
            EXPECT_NEAR(pattern.millimetres(), 0.3689, 0.0001);
            EXPECT_NEAR(pattern.showing, 1, 1e-9);
            EXPECT_FALSE(pattern.light);
        }
        if (pattern.grids == std::vector<size_t>{0, 2} || pattern.grids == std::vector<size_t>{1, 2}) {
            EXPECT_NEAR(pattern.millimetres(), 0.7316, 0.0001);
            EXPECT_NEAR(pattern.showing, 1.983, 0.001);
            EXPECT_TRUE(pattern.light);
        }
        const bool fifteenApart = pattern.light && pattern.grids.size() == 2 && pattern.grids[1] == 2;
        EXPECT_EQ(pattern.canBeSeen(), fifteenApart);
    }
    EXPECT_EQ(patternsOf(screens).size(), 10u) << "six of two, four of three";
    EXPECT_TRUE(patternsOf(screens)[0].light) << "those that show most are first";
    EXPECT_EQ(changesOf(remedyFor(screens), screens), "done");
}

// The waves of 15, 75 and 135 degrees (45 and a quarter turn) add up to nothing. Where black is finer by 2 lines
// per inch, 2 are left: a pattern of 25.4 / 2 mm.
TEST(Moire, ThreeScreensMakeAPatternOfTheirOwn)
{
    std::vector<NamedScreen> screens = offset(133);
    screens[3].grid.frequency = 135;
    const Pattern most = patternsOf(screens)[0];
    EXPECT_EQ(most.grids, (std::vector<size_t>{0, 1, 3}));
    EXPECT_NEAR(most.millimetres(), 12.7, 0.01);
    EXPECT_NEAR(most.strength, 0.397, 0.0001);
    for (const Order &order : most.orders)
        EXPECT_EQ(order.x * order.x + order.y * order.y, 1);
    EXPECT_TRUE(most.canBeSeen());
    EXPECT_EQ(changesOf(remedyFor(screens), screens), "Black 133 lpi; done");
}

// 50 and 60 lines per inch at one angle: 10 are left. 22.5 degrees apart is let be, 20 is not.
TEST(Moire, TwoScreensAtOneAngleOrNearlySo)
{
    const Pattern other = *patternBetween({{50, 45}, {60, 45}});
    EXPECT_NEAR(other.millimetres(), 2.54, 1e-9);
    EXPECT_NEAR(other.showing, std::sqrt(50 * 60.0) / 10 / kRosettePeriod, 1e-9);
    EXPECT_TRUE(other.canBeSeen());
    const Pattern even = *patternBetween({{60, 0}, {60, 22.5}});
    EXPECT_NEAR(even.frequency, 60 * 2 * sine(11.25), 1e-9);
    EXPECT_FALSE(even.canBeSeen());
    EXPECT_TRUE(patternBetween({{60, 0}, {60, 20}})->canBeSeen());
    EXPECT_NEAR(patternBetween({{60, 85}, {60, 5}})->frequency, 60 * 2 * sine(5), 1e-9) << "10 degrees apart";
}

// Of a screen of 100 lines the second wave is 200, of one of 190 the first: 10 are left, at a quarter of the
// contrast.
TEST(Moire, HarmonicsMakePatternsToo)
{
    const Pattern second = *patternBetween({{100, 30}, {190, 30}});
    EXPECT_NEAR(second.frequency, 10, 1e-9);
    EXPECT_EQ(second.strength, 0.25);
    EXPECT_EQ(std::abs(second.orders[0].x) + std::abs(second.orders[0].y), 2);
    EXPECT_EQ(std::abs(second.orders[1].x) + std::abs(second.orders[1].y), 1);
    // (2, 1) and (1, 2) lie 36.87 degrees apart, √5 of the frequency long: turned by 37.5 they miss each other by
    // 2 √5 sin(0.315°).
    const Pattern knight = *patternBetween({{60, 0}, {60, 37.5}});
    EXPECT_NEAR(knight.strength, 0.04, 1e-9);
    EXPECT_NEAR(knight.frequency, 60 * 2 * std::sqrt(5) * sine((37.5 - 36.8698976) / 2), 1e-6);
}

// Lines have one wave, across them: dots at 0 and lines at 90 both have one to the right.
TEST(Moire, LinesHaveOneWave)
{
    EXPECT_NEAR(patternBetween({{50, 0}, {54, 90, GridKind::lines}})->frequency, 4, 1e-9);
    EXPECT_NEAR(patternBetween({{50, 0}, {54, 0, GridKind::lines}})->frequency, 4, 1e-9) << "the other of the two";
    const Pattern crossed = *patternBetween({{50, 0, GridKind::lines}, {54, 90, GridKind::lines}});
    EXPECT_GT(crossed.frequency, 50) << "lines across each other";
    EXPECT_EQ(patternBetween({{50, 0, GridKind::lines}, {50, 2, GridKind::lines}})->orders,
              (Orders{{1, 0}, {-1, 0}}));
    // Half of the contrast is in the second wave, not a quarter.
    EXPECT_EQ(patternBetween({{100, 30, GridKind::lines}, {190, 30, GridKind::lines}})->strength, 0.5);
}

// What cannot be told from one grid shifts the colour of the whole.
TEST(Moire, OneGridTwiceIsNoPattern)
{
    EXPECT_TRUE(shareGrid({60, 0}, {60, 90}));
    EXPECT_TRUE(shareGrid({60, 0.05}, {60.05, 89.98}));
    EXPECT_FALSE(shareGrid({60, 0}, {60.2, 0}));
    EXPECT_FALSE(shareGrid({60, 0}, {60, 0.2}));
    EXPECT_FALSE(shareGrid({60, 0}, {60, 0, GridKind::lines}));
    EXPECT_FALSE(patternBetween({{60, 30}, {60, 30}})->canBeSeen());
    EXPECT_FALSE(patternBetween({{60, 30}, {60.1, 30}})->canBeSeen());
    const Grid exact{60, 30, GridKind::dots, 0.0001}, exactToo{60.1, 30, GridKind::dots, 0.0001};
    EXPECT_NEAR(patternBetween({exact, exactToo})->frequency, 0.1, 1e-9);
}

TEST(Moire, TheRemedyIsUsualAndComputed)
{
    const std::vector<NamedScreen> near = {{"Cyan", {60, 25}}, {"Magenta", {60, 75}}, {"Black", {60, 45}}};
    EXPECT_EQ(changesOf(remedyFor(near), near), "Cyan 15 degrees; done");
    std::vector<NamedScreen> fixed = near;
    fixed[0].movable = false;
    EXPECT_EQ(changesOf(remedyFor(fixed), fixed), "Black 52.5 degrees; done");
    fixed[2].movable = false;
    EXPECT_EQ(changesOf(remedyFor(fixed), fixed), "not all");
}

TEST(Moire, FourDarkPlatesAreSpreadEvenly)
{
    const std::vector<NamedScreen> four = {
        {"Red", {60, 45}}, {"Green", {61, 45}}, {"Blue", {62, 45}}, {"Black", {63, 45}}};
    const Remedy remedy = remedyFor(four);
    EXPECT_TRUE(remedy.complete) << changesOf(remedy, four);
    for (const Pattern &pattern : patternsOf(remedied(four)))
        EXPECT_FALSE(pattern.canBeSeen());
    EXPECT_LE(remedy.changes.size(), 4u);
}

}  // namespace
