// The dots of films: tiles, thresholds, comparing. Each is compared with a slow way of its own.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>
#include <random>
#include <stdexcept>

#include "screening/compare.h"
#include "screening/even_order.h"
#include "screening/weighted_sums.h"

namespace {

using riders::screening::findTile;
using riders::screening::Resolution;
using riders::screening::Screen;
using riders::screening::screenRow;
using riders::screening::screenRowPlainly;
using riders::screening::Thresholds;
using riders::screening::Tile;

double roundDot(double x, double y)
{
    return 1 - (x * x + y * y);
}

struct Asked {
    Screen screen;
    Resolution resolution;
};

// Cells of whole pixels, slanted ones, fine and coarse ones, pixels that are not square.
const std::vector<Asked> &askedScreens()
{
    static const std::vector<Asked> screens = {
        {{60, 0}, {600, 600}},      {{60, 45}, {600, 600}},     {{133, 15}, {600, 600}},
        {{45, 22.5}, {1200, 1200}}, {{100, -75}, {1200, 1200}}, {{150, 371}, {2400, 2400}},
        {{20, 52.5}, {1200, 1200}}, {{55, 22.5}, {1440, 720}},  {{45, 82.5}, {720, 360}},
        {{300, 0}, {600, 600}},
    };
    return screens;
}

std::string nameOf(const Asked &asked)
{
    return std::to_string(asked.screen.frequency) + " lpi at " + std::to_string(asked.screen.angle) + " on " +
           std::to_string(asked.resolution.across) + " x " + std::to_string(asked.resolution.down);
}

// Frequency and angle of a wave of that many periods to a pixel.
Screen waveOf(double across, double down, const Resolution &resolution)
{
    across *= resolution.across, down *= resolution.down;
    return {std::hypot(across, down), std::atan2(down, across) * 180 / std::numbers::pi};
}

TEST(ScreenTile, HasTheFrequencyAndAngleThatWereAskedFor)
{
    for (const Asked &asked : askedScreens()) {
        SCOPED_TRACE(nameOf(asked));
        const Tile tile = findTile(asked.screen, asked.resolution);
        const double pixels = double(tile.pixels);
        const Screen u = waveOf(double(tile.rightU) / pixels, double(tile.downU) / pixels, asked.resolution),
                     v = waveOf(double(tile.rightV) / pixels, double(tile.downV) / pixels, asked.resolution);
        EXPECT_NEAR(u.frequency, asked.screen.frequency, 0.01);
        EXPECT_NEAR(v.frequency, asked.screen.frequency, 0.01);
        EXPECT_NEAR(std::remainder(u.angle - asked.screen.angle, 360), 0, 0.002);
        EXPECT_NEAR(std::remainder(v.angle - asked.screen.angle - 90, 360), 0, 0.002);
        EXPECT_LE(tile.frequencyError, 0.008);
        EXPECT_LE(tile.angleError, 0.0015);
    }
}

TEST(ScreenTile, RepeatsOnWholeCells)
{
    for (const Asked &asked : askedScreens()) {
        SCOPED_TRACE(nameOf(asked));
        const Tile tile = findTile(asked.screen, asked.resolution);
        EXPECT_EQ(tile.pixels, tile.width * tile.height);
        for (const auto &[x, y] : {std::pair(tile.width, std::int64_t(0)), std::pair(tile.shift, tile.height)}) {
            EXPECT_EQ((x * tile.rightU + y * tile.downU) % tile.pixels, 0);
            EXPECT_EQ((x * tile.rightV + y * tile.downV) % tile.pixels, 0);
        }
    }
}

TEST(ScreenTile, IsCloseEvenWhereNoneIsExactEnough)
{
    const riders::screening::Tolerance none = {1e-7, 1e-8};
    const Tile tile = findTile({45, 22.5}, {600, 600}, none);
    EXPECT_GT(tile.pixels, 0);
    EXPECT_LE(tile.pixels, riders::screening::kMostTilePixels);
    EXPECT_LT(tile.frequencyError, 0.01);
    EXPECT_LT(tile.angleError, 0.01);
}

TEST(ScreenTile, IsRefusedWhereThereCanBeNone)
{
    const double nan = std::nan("");
    for (const Asked &asked : std::vector<Asked>{{{0, 0}, {600, 600}},
                                                 {{-60, 0}, {600, 600}},
                                                 {{nan, 0}, {600, 600}},
                                                 {{60, nan}, {600, 600}},
                                                 {{301, 0}, {600, 600}},
                                                 {{301, 0}, {1200, 600}},
                                                 {{1, 45}, {5080, 5080}}})
        EXPECT_THROW(findTile(asked.screen, asked.resolution), std::invalid_argument) << nameOf(asked);
    EXPECT_EQ(findTile({1, 0}, {2400, 2400}).pixels, 2400 * 2400);
}

// The share of a tile's pixels that a tone inks, and which they are.
std::vector<bool> inkedPixels(const Thresholds &thresholds, int tone)
{
    const Tile &tile = thresholds.tile();
    std::vector<bool> inked;
    for (std::int64_t y = 0; y < tile.height; ++y)
        for (std::int64_t x = 0; x < tile.width; ++x)
            inked.push_back(tone >= thresholds.rowOf(y)[thresholds.placeIn(x, y)]);
    return inked;
}

TEST(ScreenThresholds, GiveEachToneItsInk)
{
    for (const Asked &asked : askedScreens()) {
        SCOPED_TRACE(nameOf(asked));
        const Thresholds thresholds(findTile(asked.screen, asked.resolution), roundDot);
        const Tile &tile = thresholds.tile();
        std::vector<std::int64_t> counts(257);
        for (std::int64_t y = 0; y < tile.height; ++y)
            for (std::int64_t x = 0; x < tile.width; ++x)
                ++counts[thresholds.rowOf(y)[x]];
        EXPECT_EQ(counts[0], 0);
        std::int64_t ink = 0;
        for (int tone = 1; tone <= 255; ++tone) {
            EXPECT_GT(counts[std::size_t(tone)], 0) << "tone " << tone << " is no darker than the one before";
            ink += counts[std::size_t(tone)];
            EXPECT_NEAR(double(ink) / double(tile.pixels), tone / 255.0, 0.0005);
        }
        EXPECT_EQ(ink, tile.pixels);
    }
}

// The oracle computes each pixel's place in its cell in floating point and sorts them all.
TEST(ScreenThresholds, InkTheHighestSpotValues)
{
    for (const Asked &asked : askedScreens()) {
        SCOPED_TRACE(nameOf(asked));
        const Tile tile = findTile(asked.screen, asked.resolution);
        if (tile.pixels > 200000 || riders::screening::hasSmallCells(tile))
            continue;  // slow, and no different; or in another order, on purpose
        const Thresholds thresholds(tile, roundDot);
        std::vector<double> values;
        const double pixels = double(tile.pixels);
        for (std::int64_t y = 0; y < tile.height; ++y)
            for (std::int64_t x = 0; x < tile.width; ++x) {
                const auto inCell = [&](std::int64_t right, std::int64_t down) {
                    const double cells =
                        (double(x) + 0.5) * double(right) / pixels + (double(y) + 0.5) * double(down) / pixels;
                    return 2 * (cells - std::floor(cells)) - 1;
                };
                values.push_back(roundDot(inCell(tile.rightU, tile.downU), inCell(tile.rightV, tile.downV)));
            }
        std::vector<double> sorted = values;
        std::sort(sorted.begin(), sorted.end(), std::greater<>());
        for (const int tone : {1, 26, 128, 200, 254}) {
            const std::vector<bool> inked = inkedPixels(thresholds, tone);
            const auto count = static_cast<std::size_t>(std::count(inked.begin(), inked.end(), true));
            const double last = sorted[count - 1];
            for (std::size_t i = 0; i < values.size(); ++i) {
                if (std::abs(values[i] - last) < 3e-4)
                    continue;  // as good as equal
                ASSERT_EQ(inked[i], values[i] > last) << "tone " << tone << ", pixel " << i;
            }
        }
    }
}

// Rows that lie below one another are shifted copies; columns left of the first and rows above it count, too.
TEST(ScreenThresholds, RepeatOverThePage)
{
    for (const Asked &asked : askedScreens()) {
        SCOPED_TRACE(nameOf(asked));
        const Thresholds thresholds(findTile(asked.screen, asked.resolution), roundDot);
        const Tile &tile = thresholds.tile();
        const auto at = [&](std::int64_t x, std::int64_t y) {
            return thresholds.rowOf(y)[thresholds.placeIn(x, y)];
        };
        for (std::int64_t y = -3; y < 4; ++y)
            for (std::int64_t x = -5; x < 6; ++x) {
                EXPECT_EQ(at(x, y), at(x + tile.width, y));
                EXPECT_EQ(at(x, y), at(x + tile.shift, y + tile.height));
            }
        for (std::size_t i = 0; i < Thresholds::kRun; ++i)
            EXPECT_EQ(thresholds.rowOf(0)[thresholds.length() + i], thresholds.rowOf(0)[i]);
    }
}

// A cell of four by four pixels has 16 steps of its own; the others are spread over its copies.
TEST(ScreenThresholds, SpreadsStepsOverCellsThatAreAlike)
{
    const Thresholds thresholds(findTile({150, 0}, {600, 600}), roundDot);
    const Tile &tile = thresholds.tile();
    const int tone = 255 * 17 / 32;  // a half pixel more than eight
    std::vector<int> more;
    for (std::int64_t y = 0; y < tile.height; y += 4)
        for (std::int64_t x = 0; x < tile.width; x += 4) {
            int ink = 0;
            for (std::int64_t i = 0; i < 16; ++i)
                ink += tone >= thresholds.rowOf(y + i / 4)[thresholds.placeIn(x + i % 4, y + i / 4)];
            EXPECT_TRUE(ink == 8 || ink == 9);
            more.push_back(ink == 9);
        }
    // No four cells in a square are all darker: they alternate.
    const auto across = static_cast<std::size_t>(tile.width / 4);
    ASSERT_EQ(more.size() % across, 0U);
    for (std::size_t i = 0; i + across + 1 < more.size(); ++i) {
        if ((i + 1) % across == 0)
            continue;
        EXPECT_LE(more[i] + more[i + 1] + more[i + across] + more[i + across + 1], 3);
    }
}

TEST(ScreenRow, IsTheSameInVectorsAndPlainly)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto upTo = [&](unsigned most) { return random() % (most + 1); };
    for (const Asked &asked : askedScreens()) {
        const Thresholds thresholds(findTile(asked.screen, asked.resolution), roundDot);
        for (int times = 0; times < 60; ++times) {
            const std::size_t width = times < 40 ? upTo(300) : upTo(20000);
            const auto x = std::int64_t(upTo(100000)) - 50000, y = std::int64_t(upTo(100000)) - 50000;
            std::vector<std::uint8_t> tones(width);
            for (std::uint8_t &tone : tones)
                tone = static_cast<std::uint8_t>(upTo(255));
            std::vector<std::uint8_t> fast((width + 7) / 8 + 1, 0xA5), plain = fast;
            screenRow(thresholds, x, y, tones.data(), width, fast.data());
            screenRowPlainly(thresholds, x, y, tones.data(), width, plain.data());
            ASSERT_EQ(fast, plain) << width << " pixels from " << x << ", " << y;
            ASSERT_EQ(fast.back(), 0xA5) << "wrote too far";
            for (std::size_t i = 0; i < width; ++i)
                ASSERT_EQ((plain[i / 8] >> (7 - i % 8) & 1) != 0,
                          tones[i] >= thresholds.rowOf(y)[thresholds.placeIn(x + std::int64_t(i), y)])
                    << nameOf(asked) << ", pixel " << i;
        }
    }
}

TEST(WeightedSums, AreTheSameInVectorsAndPlainly)
{
    std::mt19937 random(std::random_device{}());
    for (int times = 0; times < 200; ++times) {
        const std::size_t count = random() % 200, taps = 1 + random() % 20;
        std::vector<std::uint16_t> numbers(count + taps), weights(taps), fast(count + 1, 7), plain = fast;
        for (auto *list : {&numbers, &weights})
            for (std::uint16_t &number : *list)
                number = static_cast<std::uint16_t>(random());
        std::vector<const std::uint16_t *> rows;
        for (std::size_t i = 0; i < taps; ++i)
            rows.push_back(numbers.data() + i);
        riders::screening::sumWeighted(weights, rows, count, fast.data());
        riders::screening::sumWeightedPlainly(weights, rows, count, plain.data());
        EXPECT_EQ(fast, plain);
        EXPECT_EQ(fast.back(), 7) << "wrote too far";
        for (std::size_t i = 0; i < count; ++i) {
            unsigned sum = 0;
            for (std::size_t k = 0; k < taps; ++k)
                sum += unsigned(weights[k]) * numbers[i + k];
            ASSERT_EQ(plain[i], sum % 65536);
        }
    }
}

TEST(ScreenRow, OfPartsIsTheRow)
{
    const Thresholds thresholds(findTile({85, 15}, {600, 600}), roundDot);
    const std::vector<std::uint8_t> tones(4096, 100);
    std::vector<std::uint8_t> whole(512), parts(512);
    screenRow(thresholds, 7, 11, tones.data(), 4096, whole.data());
    for (std::size_t at = 0; at < 4096; at += 1024)
        screenRow(thresholds, 7 + std::int64_t(at), 11, tones.data() + at, 1024, parts.data() + at / 8);
    EXPECT_EQ(whole, parts);
}

}  // namespace
