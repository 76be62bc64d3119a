// The meter's parts, each with what only it is given: tints on a page, the size of a patch, the evenness of a
// cell, the angle of lines.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "meter/fold.h"
#include "meter/meter.h"
#include "meter/spectrum.h"
#include "meter/tint_finder.h"

namespace {

namespace meter = riders::meter;

// White, with what is painted on it.
class PartsPage {
public:
    PartsPage(int width, int height, double dpi)
        : width_(width), height_(height), dpi_(dpi), rowBytes_((static_cast<std::size_t>(width) + 7) / 8),
          bits_(rowBytes_ * static_cast<std::size_t>(height))
    {
    }
    void ink(int x, int y)
    {
        bits_[static_cast<std::size_t>(y) * rowBytes_ + static_cast<std::size_t>(x) / 8] |=
            static_cast<std::uint8_t>(0x80 >> x % 8);
    }
    // Every other pixel of these.
    void tint(int left, int top, int width, int height)
    {
        for (int y = top; y < top + height; ++y)
            for (int x = left + (left + y) % 2; x < left + width; x += 2)
                ink(x, y);
    }
    meter::BitPage page() const { return {bits_.data(), width_, height_, rowBytes_, dpi_}; }

private:
    int width_, height_;
    double dpi_;
    std::size_t rowBytes_;
    std::vector<std::uint8_t> bits_;
};

std::vector<int> sides(const meter::PageWindow &window)
{
    return {window.left, window.top, window.width, window.height};
}

// At 100 dpi, blocks of ten pixels.
TEST(MeterTints, EndWhereTheInkDoes)
{
    PartsPage page(200, 160, 100);
    page.tint(30, 20, 60, 50);
    page.tint(120, 90, 40, 60);
    const std::vector<meter::PageWindow> tints = meter::findTints(page.page(), 9);
    ASSERT_EQ(tints.size(), 2U);
    EXPECT_EQ(sides(tints[0]), (std::vector<int>{30, 20, 60, 50}));
    EXPECT_EQ(sides(tints[1]), (std::vector<int>{120, 90, 40, 60}));
}

TEST(MeterTints, ReachTheEdgesOfThePage)
{
    PartsPage page(120, 200, 100);
    page.tint(0, 0, 120, 200);
    const std::vector<meter::PageWindow> tints = meter::findTints(page.page(), 1);
    ASSERT_EQ(tints.size(), 1U);
    EXPECT_EQ(sides(tints[0]), (std::vector<int>{0, 0, 120, 200}));
}

TEST(MeterTints, AreUpToThreeInchesLong)
{
    PartsPage page(340, 120, 100);
    page.tint(0, 0, 340, 120);
    const std::vector<meter::PageWindow> wide = meter::findTints(page.page(), 1);
    ASSERT_EQ(wide.size(), 1U);
    EXPECT_EQ(sides(wide[0]), (std::vector<int>{0, 0, 300, 120}));
    PartsPage high(120, 340, 100);
    high.tint(0, 0, 120, 340);
    EXPECT_EQ(sides(meter::findTints(high.page(), 1).at(0)), (std::vector<int>{0, 0, 120, 300}));
}

// Growing to both sides of where the square was found.
TEST(MeterTints, GrowToAllSidesButNotIntoEachOther)
{
    PartsPage page(300, 100, 100);
    page.tint(0, 40, 300, 20);
    page.tint(100, 10, 60, 80);
    for (const meter::PageWindow &one : meter::findTints(page.page(), 9))
        for (const meter::PageWindow &other : meter::findTints(page.page(), 9)) {
            const bool same = sides(one) == sides(other);
            const bool meet = one.left < other.left + other.width && other.left < one.left + one.width &&
                              one.top < other.top + other.height && other.top < one.top + one.height;
            EXPECT_EQ(meet, same);
        }
    const std::vector<meter::PageWindow> tints = meter::findTints(page.page(), 9);
    ASSERT_EQ(tints.size(), 3U);
    EXPECT_EQ(sides(tints[0]), (std::vector<int>{100, 10, 60, 80}));
    EXPECT_EQ(sides(tints[1]), (std::vector<int>{160, 40, 140, 20}));
    EXPECT_EQ(sides(tints[2]), (std::vector<int>{0, 40, 100, 20}));
}

TEST(MeterSpectrum, IsOfAPatchThatIsQuickToTransform)
{
    PartsPage page(800, 800, 100);
    page.tint(0, 0, 800, 800);
    const meter::Spectrum spectrum(page.page(), {20, 30, 130, 300}, 2);
    EXPECT_EQ(spectrum.across(), 128);
    EXPECT_EQ(spectrum.down(), 256);
    const meter::Spectrum thirds(page.page(), {0, 0, 800, 300}, 3);
    EXPECT_EQ(thirds.across(), 768);
    EXPECT_EQ(thirds.down(), 288);
}

meter::FoldedCell cellOf(std::vector<float> inked)
{
    meter::FoldedCell cell;
    cell.columns = static_cast<int>(inked.size()), cell.rows = 1;
    cell.pixels.assign(inked.size(), 10);
    cell.inked = std::move(inked);
    return cell;
}

TEST(FoldedCell, EvennessIsTheShareOfTheVariationThatItsBinsExplain)
{
    EXPECT_DOUBLE_EQ(cellOf({10, 0}).evenness(), 1);
    EXPECT_DOUBLE_EQ(cellOf({5, 5}).evenness(), 0);
    // 20 pixels in 2 bins, half of them inked; 3.2 of the variation is within the bins.
    EXPECT_NEAR(cellOf({8, 2}).evenness(), 1 - 3.2 / 18 / 0.25, 1e-6);
    EXPECT_NEAR(cellOf({9, 1, 8, 2}).evenness(), 1 - 5.0 / 36 / 0.25, 1e-6);
    meter::FoldedCell partly = cellOf({9, 1, 0});
    partly.pixels[2] = 0;  // says nothing
    EXPECT_NEAR(partly.evenness(), 1 - 1.8 / 18 / 0.25, 1e-6);
}

// Lines at that angle in device space, where y points down; 20 to the inch.
PartsPage linesAt(double degrees)
{
    PartsPage page(360, 360, 300);
    const double angle = degrees * std::numbers::pi / 180;
    for (int y = 0; y < 360; ++y)
        for (int x = 0; x < 360; ++x) {
            const double across = (y * std::cos(angle) - x * std::sin(angle)) * 20 / 300;
            if (across - std::floor(across) < 0.5)
                page.ink(x, y);
        }
    return page;
}

TEST(MeterLines, HaveAnAngleInTheHalfTurn)
{
    for (const double angle : {10.0, 45.0, 90.0, 120.0, 150.0, 175.0}) {
        SCOPED_TRACE(angle);
        const PartsPage page = linesAt(angle);
        const meter::ScreenReading reading = meter::readScreen(page.page(), meter::PageWindow{0, 0, 360, 360});
        EXPECT_EQ(reading.kind, meter::ScreenKind::lines);
        EXPECT_NEAR(reading.frequency, 20, 0.1);
        EXPECT_NEAR(reading.angle, angle, 0.2);
        EXPECT_NEAR(reading.cellPixels, 15, 0.1);
    }
    const double level = meter::readScreen(linesAt(0).page(), meter::PageWindow{0, 0, 360, 360}).angle;
    EXPECT_GE(level, 0);
    EXPECT_LT(level, 180);
    EXPECT_NEAR(std::remainder(level, 180), 0, 0.2);
}

}  // namespace
