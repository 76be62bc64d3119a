// The meter, on pages whose screens are known.
#include "screens/meter_support.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "meter/tint_finder.h"
#include "support/toolbox_test.h"

namespace {

namespace meter = riders::meter;

using meter::BitPage;
using meter::PageWindow;
using meter::ScreenKind;
using meter::ScreenReading;

struct Asked {
    double frequency, angle, ink, dpi;
    const char *spot;
};

std::string nameOf(const Asked &asked)
{
    std::ostringstream name;
    name << asked.spot << " " << asked.frequency << " lpi at " << asked.angle << " degrees, ink " << asked.ink
         << ", " << asked.dpi << " dpi";
    return name.str();
}

const meter::NamedSpot &spotNamed(const std::string &name)
{
    for (const meter::NamedSpot &spot : meter::namedSpots())
        if (spot.name == name)
            return spot;
    throw std::runtime_error("no spot function " + name);
}

PaintedPage tintPage(const Asked &asked, double inches)
{
    const int side = static_cast<int>(inches * asked.dpi);
    PaintedPage page(side, side, asked.dpi);
    page.tint({asked.frequency, asked.angle, asked.ink, asked.dpi, spotNamed(asked.spot).value});
    return page;
}

PageWindow wholeOf(const BitPage &page)
{
    return {0, 0, page.width, page.height};
}

void expectExact(const Asked &asked, double inches)
{
    SCOPED_TRACE(nameOf(asked));
    const PaintedPage painted = tintPage(asked, inches);
    const BitPage &page = painted.page();
    const ScreenReading reading = meter::readScreen(page, wholeOf(page));
    const bool lines = asked.spot == std::string("Line");
    ASSERT_EQ(reading.kind, lines ? ScreenKind::lines : ScreenKind::dots);
    EXPECT_NEAR(reading.frequency, asked.frequency, 0.0002 * asked.frequency);
    EXPECT_NEAR(std::remainder(reading.angle - asked.angle, lines ? 180 : 90), 0, 0.01);
    EXPECT_NEAR(reading.ink, meter::inkShare(page, wholeOf(page)), 0.005);
    EXPECT_GT(meter::likenessTo(page, reading, spotNamed(asked.spot).value).correlation, 0.99);
}

TEST(Meter, ReadsIdealScreensExactly)
{
    for (const Asked &asked : {Asked{85, 45, 0.25, 600, "Round"},
                               {150, 15, 0.4, 600, "Euclidean"},
                               {20, 0, 0.05, 600, "Round"},
                               {133.3, 71.6, 0.95, 1200, "Ellipse"},
                               {47.43, 18.435, 0.5, 600, "Line"},
                               {120, 90, 0.6, 600, "Line"}})
        expectExact(asked, 3);
}

TEST(Meter, ReadsFineResolution)
{
    expectExact({65.5, 22.5, 0.7, 2400, "Diamond"}, 1.5);
}

TEST(Meter, ReadsRandomIdealScreensExactly)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto between = [&](double low, double high) {
        return std::uniform_real_distribution<>(low, high)(random);
    };
    for (int i = 0; i < 4; ++i) {
        const char *spot = meter::namedSpots()[random() % meter::namedSpots().size()].name;
        const double frequency = between(20, 150), cell = 600 / frequency;
        const double least = std::max(0.05, 2.5 / (cell * cell));  // dots of two pixels and more
        expectExact({frequency, between(0, 89.9), between(least, 1 - least), 600, spot}, 3);
    }
}

// A page of words, rules and a few marks; no part of it is a flat tint.
void typeset(PaintedPage &page, const PageWindow &where, unsigned seed)
{
    std::mt19937 random(seed);
    const int em = static_cast<int>(page.page().dpi / 7);
    for (int y = where.top; y + em < where.top + where.height; y += em * 3 / 2)
        for (int x = where.left; x + em < where.left + where.width; x += em / 2) {
            if (random() % 6 == 0)
                continue;
            page.fill({x, y + static_cast<int>(random() % 3) * em / 4, em / 12 + 1, em / 2});
            page.fill({x, y + static_cast<int>(random() % 4) * em / 5, em / 3, em / 12 + 1});
        }
}

TEST(Meter, FindsTheTintAmongTextAndLines)
{
    PaintedPage painted(2400, 3000, 300);
    typeset(painted, {100, 100, 2200, 2800}, 3);
    const PageWindow tint{900, 1500, 500, 420};
    painted.tint(tint, {53, 37, 0.3, 300});
    painted.fill({0, 2000, 2400, 4});
    const ScreenReading reading = meter::readScreen(painted.page());
    ASSERT_EQ(reading.kind, ScreenKind::dots);
    EXPECT_GE(reading.window.left, tint.left);
    EXPECT_GE(reading.window.top, tint.top);
    EXPECT_LE(reading.window.left + reading.window.width, tint.left + tint.width);
    EXPECT_LE(reading.window.top + reading.window.height, tint.top + tint.height);
    EXPECT_GT(reading.window.width * reading.window.height, tint.width * tint.height / 2);
    EXPECT_NEAR(reading.frequency, 53, 0.05);
    EXPECT_NEAR(reading.angle, 37, 0.1);
    EXPECT_NEAR(reading.ink, 0.3, 0.01);
}

TEST(Meter, TextAloneHasNoScreen)
{
    PaintedPage painted(2400, 3000, 300);
    typeset(painted, {100, 100, 2200, 2800}, 4);
    EXPECT_EQ(meter::readScreen(painted.page()).kind, ScreenKind::none);
}

TEST(Meter, KeepsTintsApartAndTakesTheLargest)
{
    PaintedPage painted(1800, 900, 300);
    painted.tint({0, 0, 600, 900}, {60, 45, 0.25, 300});
    painted.tint({600, 0, 1200, 900}, {60, 75, 0.4, 300});
    EXPECT_GE(meter::findTints(painted.page()).size(), 2u);
    const ScreenReading reading = meter::readScreen(painted.page());
    EXPECT_GE(reading.window.left, 600);
    EXPECT_GE(reading.window.width * reading.window.height, 700 * 700);
    EXPECT_NEAR(reading.angle, 75, 0.05);
    EXPECT_NEAR(reading.ink, 0.4, 0.01);
    EXPECT_NEAR(meter::readScreen(painted.page(), PageWindow{0, 0, 600, 900}).angle, 45, 0.05);
}

TEST(Meter, DistinguishesTheNamedShapes)
{
    for (const meter::NamedSpot &spot : meter::namedSpots()) {
        const double ink = spot.name == std::string("Round") ? 0.85 : 0.6;  // below, round and Euclidean are alike
        const PaintedPage painted = tintPage({40, 22.5, ink, 600, spot.name}, 1);
        const ScreenReading reading = meter::readScreen(painted.page(), wholeOf(painted.page()));
        EXPECT_EQ(meter::nearestSpot(painted.page(), reading), spot.name);
    }
}

// An ellipse lies one way: this distinguishes 22.5 degrees from 112.5.
TEST(Meter, SeesHowACellIsTurned)
{
    for (double angle : {22.5, 112.5}) {
        const PaintedPage painted = tintPage({40, angle, 0.4, 600, "Ellipse"}, 1);
        const ScreenReading reading = meter::readScreen(painted.page(), wholeOf(painted.page()));
        const meter::Likeness like = meter::likenessTo(painted.page(), reading, spotNamed("Ellipse").value);
        EXPECT_NEAR(reading.angle, 22.5, 0.02);
        EXPECT_NEAR(std::remainder(reading.angle + 90 * like.quarterTurns - angle, 180), 0, 0.02);
    }
}

// Every second dot a little larger: a wave of half the frequency.
TEST(Meter, SeesABeat)
{
    const double frequency = 60, dpi = 600;
    PaintedPage painted(1200, 1200, dpi);
    painted.tint({frequency, 0, 0.3, dpi});
    const ScreenReading even = meter::readScreen(painted.page(), wholeOf(painted.page()));
    for (int y = 0; y < 1200; ++y)
        for (int x = 4; x < 1200; x += 20)
            if (y % 10 < 8)
                painted.set(x, y, true), painted.set(x + 1, y, true);
    const ScreenReading uneven = meter::readScreen(painted.page(), wholeOf(painted.page()));
    EXPECT_LT(even.beat.strength, 0.02);
    EXPECT_GT(uneven.beat.strength, 0.1);
    EXPECT_NEAR(uneven.beat.frequency, frequency / 2, 0.5);
    EXPECT_NEAR(std::remainder(uneven.beat.direction, 180), 0, 1);
}

TEST(Meter, NoiseHasNoScreen)
{
    PaintedPage page(700, 500, 300);
    std::mt19937 random(7);
    for (int y = 0; y < 500; ++y)
        for (int x = 0; x < 700; ++x)
            page.set(x, y, random() & 1);
    EXPECT_EQ(meter::readScreen(page.page()).kind, ScreenKind::none);
    EXPECT_EQ(meter::readScreen(page.page(), wholeOf(page.page())).kind, ScreenKind::none);
}

TEST(Meter, WhiteAndSolidHaveNoTint)
{
    PaintedPage page(600, 600, 600);
    EXPECT_TRUE(meter::readScreen(page.page()).window.empty());
    page.fill(wholeOf(page.page()));
    EXPECT_TRUE(meter::findTints(page.page()).empty());
    EXPECT_EQ(meter::readScreen(page.page(), wholeOf(page.page())).ink, 1);
}

}  // namespace
