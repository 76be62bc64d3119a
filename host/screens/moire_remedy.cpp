#include "screens/moire_remedy.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

#include "screens/moire.h"

namespace riders::screens {
namespace {

constexpr double kUsualStep = 7.5, kFineStep = 0.5;  // degrees
constexpr double kOtherFrequency = 0.06;             // standards allow so much between two plates
constexpr double kMostFaster = 0.25;                 // of a frequency, changed in steps of
constexpr double kFrequencyStep = 0.01;
constexpr double kNearAngle = 5;  // degrees
constexpr double kDegree = std::numbers::pi / 180;

// Of equal ones, the angle with the least pattern is taken, then the one nearest to what is there; patterns this
// near count as equal.
constexpr double kAlike = 0.05;

double turnOf(const Grid &grid)
{
    return grid.kind == GridKind::lines ? 180 : 90;
}

// The screens near a screen with which the waves of three add up to nothing.
std::vector<Change> sumsOfOthers(const std::vector<NamedScreen> &screens, std::size_t screen)
{
    const auto waveOf = [&screens](std::size_t i, int quarters) {
        return std::polar(screens[i].grid.frequency, (screens[i].grid.angle + 90 * quarters) * kDegree);
    };
    std::vector<Change> changes;
    for (std::size_t i = 0; i < screens.size(); ++i)
        for (std::size_t j = i + 1; j < screens.size(); ++j)
            for (int quarters = 0; quarters < 4 && i != screen && j != screen; ++quarters) {
                const std::complex<double> sum = waveOf(i, 0) + waveOf(j, quarters);
                const double frequency = std::abs(sum), angle = std::arg(sum) / kDegree;
                const Grid &grid = screens[screen].grid;
                if (std::abs(frequency / grid.frequency - 1) <= kOtherFrequency &&
                    degreesApart(GridKind::dots, angle, grid.angle) <= kNearAngle)
                    changes.push_back({screen, frequency, angle - 90 * std::floor(angle / 90)});
            }
    return changes;
}

// Kinds of proposals, from the one to be preferred.
std::vector<std::vector<Change>> proposalsFor(const std::vector<NamedScreen> &screens, std::size_t screen)
{
    const Grid &grid = screens[screen].grid;
    std::vector<double> others;  // frequencies
    for (std::size_t i = 0; i < screens.size(); ++i)
        if (i != screen && std::abs(screens[i].grid.frequency / grid.frequency - 1) <= kOtherFrequency)
            others.push_back(screens[i].grid.frequency);
    std::vector<Change> asOthers, turned, both, finely, faster;
    for (const double frequency : others)
        asOthers.push_back({screen, frequency, {}});
    for (double angle = 0; angle < turnOf(grid); angle += kUsualStep) {
        turned.push_back({screen, {}, angle});
        for (const double frequency : others)
            both.push_back({screen, frequency, angle});
    }
    if (screens.size() > kMostInThrees)  // trying takes too long
        return {asOthers, turned, both};
    for (double angle = 0; angle < turnOf(grid); angle += kFineStep)
        finely.push_back({screen, {}, angle});
    for (double share = kFrequencyStep; share < kMostFaster + kFrequencyStep / 2; share += kFrequencyStep)
        for (const double factor : {1 + share, 1 - share})
            faster.push_back({screen, std::round(grid.frequency * factor * 10) / 10, {}});
    return {asOthers, turned, both, sumsOfOthers(screens, screen), finely, faster};
}

NamedScreen changed(NamedScreen screen, const Change &change)
{
    screen.grid.frequency = change.frequency.value_or(screen.grid.frequency);
    screen.grid.angle = change.angle.value_or(screen.grid.angle);
    return screen;
}

// Calls `goesOn` with each two and three that a screen makes with the dark others, twos first, until it returns
// false.
template <typename GoesOn>
void forPatterns(const std::vector<NamedScreen> &screens, std::size_t screen, const GoesOn &goesOn)
{
    const Grid &grid = screens[screen].grid;
    std::vector<Grid> others;
    for (std::size_t i = 0; i < screens.size(); ++i)
        if (i != screen && !screens[i].light)
            others.push_back(screens[i].grid);
    for (const Grid &other : others)
        if (!goesOn({grid, other}))
            return;
    for (std::size_t i = 0; i < others.size() && screens.size() <= kMostInThrees; ++i)
        for (std::size_t j = i + 1; j < others.size(); ++j)
            if (!goesOn({grid, others[i], others[j]}))
                return;
}

int patternsSeen(const std::vector<NamedScreen> &screens, std::size_t screen)
{
    int seen = 0;
    forPatterns(screens, screen, [&seen](const std::vector<Grid> &grids) {
        const std::optional<Pattern> pattern = patternBetween(grids);
        seen += pattern && pattern->canBeSeen();
        return true;
    });
    return seen;
}

// How much the worst pattern that a screen makes with one other shows; none where a pattern can be seen, or where
// it lies on another.
std::optional<double> worstUnseen(const std::vector<NamedScreen> &screens, std::size_t screen)
{
    std::optional<double> worst = 0;
    forPatterns(screens, screen, [&worst](const std::vector<Grid> &grids) {
        const std::optional<Pattern> pattern = patternBetween(grids);
        if ((pattern && pattern->canBeSeen()) || (grids.size() == 2 && shareGrid(grids[0], grids[1])))
            worst.reset();
        else if (pattern && grids.size() == 2)
            worst = std::max(*worst, pattern->showing);
        return worst.has_value();
    });
    return worst;
}

struct Proposal {
    Change change;
    int rank = 0;  // of its kind
    double worst = 0, distance = 0;
};

bool isBetter(const Proposal &one, const Proposal &other)
{
    if (one.rank != other.rank)
        return one.rank < other.rank;
    if (std::abs(one.worst - other.worst) > kAlike)
        return one.worst < other.worst;
    return one.distance < other.distance;
}

double distanceOf(const Grid &grid, const Change &change)
{
    const double turned = change.angle ? degreesApart(grid.kind, grid.angle, *change.angle) : 0;
    return turned + (change.frequency ? 100 * std::abs(*change.frequency / grid.frequency - 1) : 0);
}

// The best change of one screen after which it makes no pattern, if there is one.
std::optional<Proposal> bestFor(const std::vector<NamedScreen> &screens, std::size_t screen)
{
    std::optional<Proposal> best;
    const std::vector<std::vector<Change>> kinds = proposalsFor(screens, screen);
    for (std::size_t rank = 0; rank < kinds.size() && !best; ++rank)
        for (const Change &change : kinds[rank]) {
            std::vector<NamedScreen> tried = screens;
            tried[screen] = changed(screens[screen], change);
            const std::optional<double> worst = worstUnseen(tried, screen);
            if (!worst)
                continue;
            const Proposal proposal{change, static_cast<int>(rank), *worst,
                                    distanceOf(screens[screen].grid, change)};
            if (!best || isBetter(proposal, *best))
                best = proposal;
        }
    return best;
}

}  // namespace

Remedy remedyFor(const std::vector<NamedScreen> &screens)
{
    std::vector<NamedScreen> tried = screens;
    std::vector<bool> done(screens.size(), false);
    Remedy remedy;
    for (;;) {
        int most = 0;  // patterns that a change is rid of
        std::optional<Proposal> best;
        for (std::size_t i = 0; i < screens.size(); ++i) {
            const int seen = tried[i].light ? 0 : patternsSeen(tried, i);
            remedy.complete = (i == 0 || remedy.complete) && seen == 0;
            if (seen == 0 || seen < most || done[i] || !tried[i].movable)
                continue;
            const std::optional<Proposal> proposal = bestFor(tried, i);
            if (proposal && (seen > most || !best || isBetter(*proposal, *best))) {
                best = proposal;
                most = seen;
            }
        }
        if (!best)
            return remedy;
        const Change &change = best->change;
        tried[change.screen] = changed(tried[change.screen], change);
        done[change.screen] = true;
        remedy.changes.push_back(change);
    }
}

}  // namespace riders::screens
