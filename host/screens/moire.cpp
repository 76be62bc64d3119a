#include "screens/moire.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdlib>
#include <numbers>

namespace riders::screens {
namespace {

using Wave = std::complex<double>;  // periods per inch to the right and down

// Patterns of less strength have a contrast of 1 % at most.
constexpr double kLeastStrength = 0.04;
constexpr int kHighestOrder = 25;  // of one axis; lines reach kLeastStrength there
// What a third grid leaves of a pattern's contrast: a round dot's wave is at most 0.397 of the mean of a tint of
// 50 %.
constexpr double kThird = 0.397;
// The wave across the corners of a mesh's openings, as a share of that along its threads.
constexpr double kCorner = 2 / std::numbers::pi;

// A wave of a grid, or one of its multiples.
struct Harmonic {
    Order order;
    Wave wave;
    double strength = 0;
};

// A round dot's wave (k, l) is at most 0.199 / (k² + l²) of full ink, at the tint where the dot's edge lies on the
// first zero of the Bessel function J0; a line's wave k is at most 1 / (pi k).
double strengthOf(GridKind kind, Order order)
{
    const int x = std::abs(order.x), y = std::abs(order.y);
    if (kind == GridKind::dots)
        return 1.0 / (x * x + y * y);
    const double along = 1.0 / (std::max(x, 1) * std::max(y, 1));
    return kind == GridKind::threads && x > 0 && y > 0 ? along * kCorner : along;
}

// Those that are strong enough to be in a pattern, strongest first.
std::vector<Harmonic> harmonicsOf(const Grid &grid)
{
    // Lines run at the angle, their wave goes across.
    const double degrees = grid.kind == GridKind::lines ? grid.angle + 90 : grid.angle;
    const Wave across = std::polar(grid.frequency, degrees * std::numbers::pi / 180), down = across * Wave(0, 1);
    const int furthest = grid.kind == GridKind::dots ? 5 : kHighestOrder;
    const int furthestDown = grid.kind == GridKind::lines ? 0 : furthest;
    std::vector<Harmonic> harmonics;
    for (int x = -furthest; x <= furthest; ++x)
        for (int y = -furthestDown; y <= furthestDown; ++y) {
            if (x == 0 && y == 0)
                continue;
            const Order order{x, y};
            const double strength = strengthOf(grid.kind, order);
            if (strength >= kLeastStrength)
                harmonics.push_back({order, across * double(x) + down * double(y), strength});
        }
    std::stable_sort(harmonics.begin(), harmonics.end(),
                     [](const Harmonic &one, const Harmonic &other) { return one.strength > other.strength; });
    return harmonics;
}

// Tries all sums of one harmonic of each grid.
class Search {
public:
    explicit Search(const std::vector<Grid> &grids) : grids_(grids), orders_(grids.size())
    {
        double logarithms = 0;
        int screens = 0;
        for (const Grid &grid : grids) {
            harmonics_.push_back(harmonicsOf(grid));
            if (grid.kind != GridKind::threads) {
                logarithms += std::log(grid.frequency);
                ++screens;
            }
        }
        rosette_ = std::exp(logarithms / std::max(screens, 1)) / kRosettePeriod;
    }

    std::optional<Pattern> most()
    {
        add(0, {}, 0, grids_.size() == 3 ? kThird : 1);
        return best_;
    }

private:
    void add(std::size_t grid, Wave sum, double inexact, double strength)
    {
        if (grid == grids_.size()) {
            judge(std::abs(sum), inexact, strength);
            return;
        }
        for (const Harmonic &harmonic : harmonics_[grid]) {
            if (strength * harmonic.strength < kLeastStrength)
                break;
            orders_[grid] = harmonic.order;
            // Each sum has an opposite: half of the first grid's waves will do.
            if (grid > 0 || harmonic.order.x > 0 || (harmonic.order.x == 0 && harmonic.order.y > 0))
                add(grid + 1, sum + harmonic.wave, inexact + std::abs(harmonic.wave) * grids_[grid].exactness,
                    strength * harmonic.strength);
        }
    }

    void judge(double frequency, double inexact, double strength)
    {
        if (frequency <= inexact)
            return;
        const double showing = strength * rosette_ / frequency;
        if (!best_ || showing > best_->showing * 1.000001)  // of equal ones the same, however they are rounded
            best_ = Pattern{{}, orders_, frequency, strength, showing};
    }

    const std::vector<Grid> &grids_;
    std::vector<std::vector<Harmonic>> harmonics_;
    std::vector<Order> orders_;
    double rosette_ = 0;  // periods per inch
    std::optional<Pattern> best_;
};

void addPattern(std::vector<Pattern> &patterns, const std::vector<NamedScreen> &screens,
                const std::vector<std::size_t> &which)
{
    std::vector<Grid> grids;
    for (const std::size_t i : which)
        grids.push_back(screens[i].grid);
    std::optional<Pattern> pattern = patternBetween(grids);
    if (!pattern)
        return;
    pattern->grids = which;
    pattern->light = std::any_of(which.begin(), which.end(), [&](std::size_t i) { return screens[i].light; });
    patterns.push_back(std::move(*pattern));
}

}  // namespace

std::optional<Pattern> patternBetween(const std::vector<Grid> &grids)
{
    std::optional<Pattern> pattern = Search(grids).most();
    for (std::size_t i = 0; pattern && i < grids.size(); ++i)
        pattern->grids.push_back(i);
    return pattern;
}

std::vector<Pattern> patternsOf(const std::vector<NamedScreen> &screens)
{
    std::vector<Pattern> patterns;
    for (std::size_t i = 0; i < screens.size(); ++i)
        for (std::size_t j = i + 1; j < screens.size(); ++j) {
            addPattern(patterns, screens, {i, j});
            for (std::size_t k = j + 1; k < std::min(screens.size(), kMostInThrees); ++k)
                addPattern(patterns, screens, {i, j, k});
        }
    std::stable_sort(patterns.begin(), patterns.end(),
                     [](const Pattern &one, const Pattern &other) { return one.showing > other.showing; });
    return patterns;
}

bool shareGrid(const Grid &one, const Grid &other)
{
    const double angle = degreesApart(one.kind, one.angle, other.angle) * std::numbers::pi / 180;
    return one.kind == other.kind && std::abs(std::polar(one.frequency, angle) - other.frequency) <=
                                         one.exactness * one.frequency + other.exactness * other.frequency;
}

}  // namespace riders::screens
