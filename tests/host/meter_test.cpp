// The meter, on pages whose screens are known.
#include "host/meter_support.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "support/toolbox_test.h"

namespace {

using riders::BitPage;
using riders::PageWindow;
using riders::ScreenKind;
using riders::ScreenReading;

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

const riders::NamedSpot &spotNamed(const std::string &name)
{
    for (const riders::NamedSpot &spot : riders::namedSpots())
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
    const ScreenReading reading = riders::readScreen(page, wholeOf(page));
    const bool lines = asked.spot == std::string("Line");
    ASSERT_EQ(reading.kind, lines ? ScreenKind::lines : ScreenKind::dots);
    EXPECT_NEAR(reading.frequency, asked.frequency, 0.0002 * asked.frequency);
    EXPECT_NEAR(std::remainder(reading.angle - asked.angle, lines ? 180 : 90), 0, 0.01);
    EXPECT_NEAR(reading.ink, riders::inkShare(page, wholeOf(page)), 0.005);
    EXPECT_GT(riders::likenessTo(page, reading, spotNamed(asked.spot).value).correlation, 0.95);
}

TEST(Meter, ReadsIdealScreensExactly)
{
    for (const Asked &asked : {Asked{85, 45, 0.25, 600, "Round"}, {150, 15, 0.4, 600, "Euclidean"},
                               {20, 0, 0.05, 600, "Round"}, {133.3, 71.6, 0.95, 1200, "Ellipse"},
                               {47.43, 18.435, 0.5, 600, "Line"}, {120, 90, 0.6, 600, "Line"}})
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
        const char *spot = riders::namedSpots()[random() % riders::namedSpots().size()].name;
        expectExact({between(20, 150), between(0, 89.9), between(0.05, 0.95), 600, spot}, 3);
    }
}

TEST(Meter, NoiseHasNoScreen)
{
    PaintedPage page(700, 500, 300);
    std::mt19937 random(7);
    for (int y = 0; y < 500; ++y)
        for (int x = 0; x < 700; ++x)
            page.set(x, y, random() & 1);
    EXPECT_EQ(riders::readScreen(page.page()).kind, ScreenKind::none);
    EXPECT_EQ(riders::readScreen(page.page(), wholeOf(page.page())).kind, ScreenKind::none);
}

TEST(Meter, WhiteAndSolidHaveNoTint)
{
    PaintedPage page(600, 600, 600);
    EXPECT_TRUE(riders::readScreen(page.page()).window.empty());
    page.fill(wholeOf(page.page()));
    EXPECT_TRUE(riders::findTints(page.page()).empty());
    EXPECT_EQ(riders::readScreen(page.page(), wholeOf(page.page())).ink, 1);
}

}  // namespace
