// The computed patterns against real dots laid over each other: their Fourier transform must have its strongest
// slow wave where the pattern is said to be.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <numbers>
#include <random>
#include <string>
#include <vector>

#include "meter/spectrum.h"
#include "screens/meter_support.h"
#include "screens/moire.h"

namespace {

namespace meter = riders::meter;
using riders::screens::Grid;
using riders::screens::GridKind;
using riders::screens::Order;
using riders::screens::Pattern;

constexpr double kDpi = 1000;
constexpr int kSide = 2048, kShrink = 4;

double fromEnvironment(const char *name, double otherwise)
{
    const char *value = std::getenv(name);
    return value ? std::atof(value) : otherwise;
}

// The tint at which a wave of that order is strongest: the dot's edge lies on the first zero of J0, the line is
// half of the wave.
double strongestTint(GridKind kind, Order order)
{
    const double square = order.x * order.x + order.y * order.y;
    return kind == GridKind::dots ? 2.404826 * 2.404826 / (4 * std::numbers::pi * square)
                                  : 0.5 / std::abs(order.x);
}

double lineSpot(double, double y)
{
    return -std::abs(y);
}

// All grids over each other, each with the tint at which its part in the pattern is strongest: the strongest of
// their slow waves.
meter::Spectrum::Peak strongestBelow(double perInch, const std::vector<Grid> &grids, const Pattern &pattern)
{
    std::vector<std::uint8_t> bits(static_cast<size_t>(kSide) * kSide / 8);
    PaintedPage one(kSide, kSide, kDpi);
    for (size_t i = 0; i < grids.size(); ++i) {
        const bool lines = grids[i].kind == GridKind::lines;
        one.tint({grids[i].frequency, grids[i].angle, strongestTint(grids[i].kind, pattern.orders[i]), kDpi,
                  lines ? lineSpot : nullptr});
        std::transform(bits.begin(), bits.end(), one.page().bits, bits.begin(), std::bit_or<>());
    }
    const meter::BitPage page{bits.data(), kSide, kSide, kSide / 8, kDpi};
    return meter::Spectrum(page, {0, 0, kSide, kSide}, kShrink).strongestBelow(perInch / kDpi);
}

double perInch(const meter::Spectrum::Peak &peak)
{
    return std::hypot(peak.wave.x, peak.wave.y) * kDpi;
}

std::string described(const std::vector<Grid> &grids, const Pattern &pattern)
{
    std::string text;
    for (size_t i = 0; i < grids.size(); ++i)
        text += std::to_string(grids[i].frequency) + (grids[i].kind == GridKind::lines ? " lines " : " dots ") +
                std::to_string(grids[i].angle) + " (" + std::to_string(pattern.orders[i].x) + ", " +
                std::to_string(pattern.orders[i].y) + "), ";
    return text + std::to_string(pattern.frequency) + " an inch, strength " + std::to_string(pattern.strength) +
           ", showing " + std::to_string(pattern.showing);
}

// Slower than two thirds of the window are not told from its edges.
bool fitsWindow(const Pattern &pattern)
{
    return pattern.frequency > 4 * kDpi / kSide;
}

Grid randomGrid(std::mt19937 &random, double linesShare)
{
    const auto from = [&random](double least, double most) {
        return std::uniform_real_distribution<double>(least, most)(random);
    };
    const GridKind kind = from(0, 1) < linesShare ? GridKind::lines : GridKind::dots;
    return {from(45, 65), from(0, kind == GridKind::lines ? 180 : 90), kind};
}

void expectAtThePeak(const std::vector<Grid> &grids, const Pattern &pattern)
{
    const meter::Spectrum::Peak peak = strongestBelow(1.04 * pattern.frequency, grids, pattern);
    EXPECT_NEAR(perInch(peak), pattern.frequency, 0.25 * kDpi / kSide) << described(grids, pattern);
}

class MoireOracle : public ::testing::Test {
protected:
    MoireOracle()
    {
        std::printf("seed %u (RIDERS_MOIRE_SEED), %d pairs and half as many threes (RIDERS_MOIRE_PAIRS)\n", seed_,
                    pairs_);
    }

    const unsigned seed_ = static_cast<unsigned>(fromEnvironment("RIDERS_MOIRE_SEED", 13));
    const int pairs_ = static_cast<int>(fromEnvironment("RIDERS_MOIRE_PAIRS", 6));
    std::mt19937 random_{seed_};
};

TEST_F(MoireOracle, TwoScreensHaveTheComputedPattern)
{
    for (int tried = 0; tried < pairs_;) {
        const std::vector<Grid> grids = {randomGrid(random_, 0.2), randomGrid(random_, 0.2)};
        const std::optional<Pattern> pattern = riders::screens::patternBetween(grids);
        if (!pattern || !pattern->canBeSeen() || !fitsWindow(*pattern))
            continue;
        expectAtThePeak(grids, *pattern);
        ++tried;
    }
}

TEST_F(MoireOracle, ThreeScreensHaveTheComputedPattern)
{
    const auto about = [this](double middle, double width) {
        return std::uniform_real_distribution<double>(middle - width, middle + width)(random_);
    };
    for (int tried = 0; tried < pairs_ / 2;) {
        const std::vector<Grid> grids = {
            {about(55, 2), about(15, 2)}, {about(55, 2), about(75, 2)}, {about(55, 2), about(45, 2)}};
        const std::optional<Pattern> pattern = riders::screens::patternBetween(grids);
        if (!pattern || !pattern->canBeSeen() || !fitsWindow(*pattern))
            continue;
        expectAtThePeak(grids, *pattern);
        ++tried;
    }
}

// And where none is said to show, the strongest wave below the rosette's is a weak one.
TEST_F(MoireOracle, WhereNoneIsComputedNoneIsThere)
{
    for (int tried = 0; tried < pairs_ / 2;) {
        const std::vector<Grid> grids = {randomGrid(random_, 0), randomGrid(random_, 0)};
        const std::optional<Pattern> pattern = riders::screens::patternBetween(grids);
        if (!pattern || pattern->canBeSeen())
            continue;
        const double rosette =
            std::sqrt(grids[0].frequency * grids[1].frequency) / riders::screens::kRosettePeriod;
        const meter::Spectrum::Peak peak = strongestBelow(rosette / riders::screens::kCanBeSeen, grids, *pattern);
        const double twoEqualScreens = 2 * 0.1987 * 0.1987;  // the wave that strength 1 is
        EXPECT_LT(peak.strength / twoEqualScreens * rosette / perInch(peak), riders::screens::kCanBeSeen)
            << described(grids, *pattern) << "; there is " << perInch(peak) << " an inch";
        ++tried;
    }
}

}  // namespace
