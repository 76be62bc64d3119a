#include "screens/moire.h"

#include <algorithm>
#include <array>
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

// A wave of a grid, or one of its multiples.
struct Multiple {
    Order order;
    double strength = 0, length = 0;  // length: in waves
};

std::vector<Multiple> multiplesOf(GridKind kind)
{
    const int furthest = kind == GridKind::dots ? 5 : kHighestOrder;
    const int furthestDown = kind == GridKind::lines ? 0 : furthest;
    std::vector<Multiple> multiples;
    for (int x = -furthest; x <= furthest; ++x)
        for (int y = -furthestDown; y <= furthestDown; ++y) {
            if (x == 0 && y == 0)
                continue;
            const double strength = strengthOf(kind, {x, y});
            if (strength >= kLeastStrength)
                multiples.push_back({{x, y}, strength, std::hypot(x, y)});
        }
    std::stable_sort(multiples.begin(), multiples.end(),
                     [](const Multiple &one, const Multiple &other) { return one.strength > other.strength; });
    return multiples;
}

// Those that are strong enough to be in a pattern, strongest first.
const std::vector<Multiple> &multiples(GridKind kind)
{
    static const std::array<std::vector<Multiple>, 3> all = {
        multiplesOf(GridKind::dots), multiplesOf(GridKind::lines), multiplesOf(GridKind::threads)};
    return all[static_cast<std::size_t>(kind)];
}

// Tries all sums of one multiple of each grid.
class Search {
public:
    explicit Search(const std::vector<Grid> &grids, bool coarsest) : grids_(grids), coarsest_(coarsest)
    {
        double product = 1;
        int screens = 0;
        for (std::size_t i = 0; i < grids.size(); ++i) {
            const Grid &grid = grids[i];
            // The wave of lines goes across them; but all others look the same after a quarter turn.
            waves_[i] = std::polar(grid.frequency, grid.angle * std::numbers::pi / 180);
            multiples_[i] = &multiples(grid.kind);
            if (grid.kind != GridKind::threads) {
                product *= grid.frequency;
                ++screens;
            }
        }
        rosette_ = std::pow(product, 1.0 / std::max(screens, 1)) / kRosettePeriod;
    }

    std::optional<Pattern> best()
    {
        add(0, {}, 0, grids_.size() == 3 ? kThird : 1);
        if (bestWorth_ == 0)
            return {};
        for (std::size_t i = 0; i < grids_.size(); ++i) {
            best_.grids.push_back(i);
            best_.orders.push_back(bestOrders_[i]);
        }
        return best_;
    }

private:
    void add(std::size_t grid, Wave sum, double inexact, double strength)
    {
        if (grid == grids_.size()) {
            judge(std::abs(sum), inexact, strength);
            return;
        }
        const Wave across = waves_[grid], down{-across.imag(), across.real()};
        const double share = grids_[grid].exactness * grids_[grid].frequency;
        for (const Multiple &multiple : *multiples_[grid]) {
            if (strength * multiple.strength < kLeastStrength)
                break;
            const Order order = multiple.order;
            orders_[grid] = order;
            // Each sum has an opposite: half of the first grid's will do.
            if (grid > 0 || order.x > 0 || (order.x == 0 && order.y > 0))
                add(grid + 1, sum + across * double(order.x) + down * double(order.y),
                    inexact + multiple.length * share, strength * multiple.strength);
        }
    }

    void judge(double frequency, double inexact, double strength)
    {
        if (frequency <= inexact)
            return;
        const double coarseness = rosette_ / frequency, worth = coarsest_ ? coarseness : strength * coarseness;
        if (worth <= bestWorth_ * 1.000001)  // of equal ones the first, however they are rounded
            return;
        bestWorth_ = worth;
        best_.frequency = frequency;
        best_.strength = strength;
        best_.showing = strength * coarseness;
        bestOrders_ = orders_;
    }

    const std::vector<Grid> &grids_;
    const bool coarsest_;
    std::array<Wave, 3> waves_;
    std::array<const std::vector<Multiple> *, 3> multiples_{};
    std::array<Order, 3> orders_, bestOrders_;
    double rosette_ = 0;  // periods per inch
    Pattern best_;
    double bestWorth_ = 0;
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
    return Search(grids, false).best();
}

std::optional<Pattern> coarsestBetween(const std::vector<Grid> &grids)
{
    return Search(grids, true).best();
}

std::vector<Pattern> patternsOf(const std::vector<NamedScreen> &screens)
{
    std::vector<Pattern> patterns;
    for (std::size_t i = 0; i < screens.size(); ++i)
        for (std::size_t j = i + 1; j < screens.size(); ++j) {
            addPattern(patterns, screens, {i, j});
            for (std::size_t k = j + 1; screens.size() <= kMostInThrees && k < screens.size(); ++k)
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
