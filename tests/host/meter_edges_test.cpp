// The meter on pages that are small, odd or full of noise: it returns, and looks at nothing outside.
#include <cmath>
#include <cstring>
#include <memory>
#include <random>

#include "meter/fold.h"
#include "meter/meter.h"
#include "support/sanitized.h"
#include "support/toolbox_test.h"

namespace {

namespace meter = riders::meter;


using meter::BitPage;
using meter::PageWindow;

// Rows as long as they must be and no longer, so that a sanitizer sees a byte too many.
struct Sheet {
    std::unique_ptr<std::uint8_t[]> bits;
    BitPage page;

    Sheet(int width, int height, double dpi)
        : bits(new std::uint8_t[static_cast<size_t>((width + 7) / 8) * static_cast<size_t>(height)]()),
          page{bits.get(), width, height, static_cast<size_t>((width + 7) / 8), dpi}
    {
    }
    size_t bytes() const { return page.rowBytes * static_cast<size_t>(page.height); }
};

TEST(MeterEdges, InkIsCountedPixelByPixel)
{
    std::mt19937 random(11);
    Sheet sheet(203, 3, 100);
    for (size_t i = 0; i < sheet.bytes(); ++i)
        sheet.bits[i] = static_cast<std::uint8_t>(random());
    for (int left : {0, 1, 7, 8, 63, 64, 200})
        for (int end : {left, left + 1, left + 3, 201, 202, 203}) {
            int ones = 0;
            for (int x = left; x < end; ++x)
                ones += sheet.page.at(x, 2);
            EXPECT_EQ(meter::inkInRow(sheet.page, 2, left, end), ones) << left << " to " << end;
        }
}

TEST(MeterEdges, WindowsAreCutToThePage)
{
    Sheet sheet(100, 50, 100);
    std::memset(sheet.bits.get(), 0xff, sheet.bytes());
    const PageWindow cut = meter::cutToPage(sheet.page, {-10, 40, 200, 2147483647});
    EXPECT_EQ(cut.left, 0);
    EXPECT_EQ(cut.top, 40);
    EXPECT_EQ(cut.width, 100);
    EXPECT_EQ(cut.height, 10);
    EXPECT_EQ(meter::inkShare(sheet.page, {90, -5, 100, 10}), 1);
    EXPECT_EQ(meter::inkShare(sheet.page, {100, 0, 10, 10}), 0);
    EXPECT_TRUE(meter::cutToPage(sheet.page, {0, 0, -5, 10}).empty());
}

TEST(MeterEdges, ReturnsForPagesOfAnySize)
{
    std::mt19937 random(12);
    for (int side : {0, 1, 2, 7, 8, 9, 31, 32, 33, 65}) {
        Sheet sheet(side, 97 - side, side == 9 ? 0 : 72);
        for (size_t i = 0; i < sheet.bytes(); ++i)
            sheet.bits[i] = static_cast<std::uint8_t>(random());
        const auto reading = meter::readScreen(sheet.page);
        EXPECT_EQ(reading.kind, meter::ScreenKind::none) << side;
        EXPECT_EQ(meter::nearestSpot(sheet.page, reading), "");
        EXPECT_EQ(meter::readScreen(sheet.page, PageWindow{-5, -5, 1000, 1000}).kind, meter::ScreenKind::none);
    }
}

// Whatever the bits are: numbers in their ranges.
TEST(MeterEdges, ReturnsForBitsOfAnyKind)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    for (int i = 0; i < (triesLess() ? 3 : 8); ++i) {
        Sheet sheet(40 + static_cast<int>(random() % 200), 40 + static_cast<int>(random() % 200), 150);
        const size_t period = 1 + random() % 40;
        for (size_t at = 0; at < sheet.bytes(); ++at)
            sheet.bits[at] =
                at < period || random() % 16 == 0 ? static_cast<std::uint8_t>(random()) : sheet.bits[at - period];
        const auto reading = meter::readScreen(sheet.page, PageWindow{0, 0, sheet.page.width, sheet.page.height});
        EXPECT_TRUE(std::isfinite(reading.frequency) && reading.frequency >= 0);
        EXPECT_TRUE(reading.angle >= 0 && reading.angle < 180) << reading.angle;
        EXPECT_TRUE(reading.ink >= 0 && reading.ink <= 1) << reading.ink;
        EXPECT_TRUE(reading.beat.strength >= 0 && std::isfinite(reading.beat.strength));
        const double like = meter::likenessTo(sheet.page, reading, [](double x, double) { return x; }).correlation;
        EXPECT_TRUE(like >= -1 && like <= 1.000001) << like;
    }
}

// Folding is what costs: it is not begun where nothing stands out of the noise.
TEST(MeterEdges, NoiseIsGivenUpEarly)
{
    std::mt19937 random(15);
    for (const int side : {33, 64, 150, 400, 1100}) {
        Sheet sheet(side, side, 300);
        for (size_t i = 0; i < sheet.bytes(); ++i)
            sheet.bits[i] = static_cast<std::uint8_t>(random());
        const std::uint64_t before = meter::pixelsLaid();
        EXPECT_EQ(meter::readScreen(sheet.page, PageWindow{0, 0, side, side}).kind, meter::ScreenKind::none);
        EXPECT_EQ(meter::pixelsLaid(), before) << side;
    }
}

// What is found again and again is refined once.
TEST(MeterEdges, AScreenIsFoldedAFewDozenTimes)
{
    Sheet sheet(900, 900, 1200);
    for (int y = 0; y < 900; ++y)
        for (int x = 0; x < 900; ++x)
            if (std::hypot(x % 14 - 6.5, y % 14 - 6.5) < 5)
                sheet.bits[static_cast<size_t>(y) * sheet.page.rowBytes + x / 8] |=
                    static_cast<std::uint8_t>(0x80 >> x % 8);
    const std::uint64_t before = meter::pixelsLaid();
    const auto reading = meter::readScreen(sheet.page, PageWindow{0, 0, 900, 900});
    EXPECT_NEAR(reading.cellPixels, 14, 0.01);
    EXPECT_LT(meter::pixelsLaid() - before, 40u * 900 * 900);
}

TEST(MeterEdges, SpotFunctionsThatFailAreTakenAsFlat)
{
    Sheet sheet(200, 200, 100);
    for (int y = 0; y < 200; ++y)
        if (y % 10 < 4)
            std::memset(&sheet.bits[static_cast<size_t>(y) * sheet.page.rowBytes], 0xff, sheet.page.rowBytes);
    const auto reading = meter::readScreen(sheet.page, PageWindow{0, 0, 200, 200});
    ASSERT_EQ(reading.kind, meter::ScreenKind::lines);
    EXPECT_NEAR(reading.frequency, 10, 0.05);
    EXPECT_LT(meter::likenessTo(sheet.page, reading, [](double, double) { return std::nan(""); }).correlation,
              0.7);
}

}  // namespace
