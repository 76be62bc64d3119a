#include "meter/find_lattice.h"

#include <algorithm>

#include "meter/fold.h"
#include "meter/refine_lattice.h"
#include "meter/spectrum.h"

namespace riders::meter {

namespace {

constexpr int kSmallestPatch = 32;
constexpr double kLeastPeriods = 4;  // in a window that can be measured
constexpr double kGoodPeriods = 10;  // in a patch whose waves can be relied on
constexpr double kLeastEvenness = 0.3;
constexpr double kWorthFitting = 0.1;  // evenness of a rough lattice
constexpr std::size_t kMostCandidates = 4;

struct FoundLattice {
    Lattice lattice;
    double evenness;  // see ScreenReading
};

struct Candidate {
    Lattice lattice;
    double power;
};

// Which peaks can be the screen's own waves? Such a wave and the one at right
// angles hold the most power; in light tints others hold nearly as much.
std::vector<Candidate> candidatesOf(const Spectrum &spectrum)
{
    const std::vector<Spectrum::Peak> peaks = spectrum.peaks(16);
    std::vector<Candidate> candidates;
    if (peaks.empty() || !spectrum.standsOut(peaks[0]))
        return candidates;
    for (const Spectrum::Peak &peak : peaks) {
        if (peak.strength < 0.35 * peaks[0].strength)
            break;
        const Spectrum::Peak partner = spectrum.peakNear(turned(peak.wave));
        const bool found = partner.strength > 0.2 * peak.strength;
        const double power = peak.strength * peak.strength + partner.strength * partner.strength;
        const bool sameCell = std::any_of(candidates.begin(), candidates.end(), [&](const Candidate &other) {
            const Wave &wave = other.lattice.across;
            return std::abs(length(wave) - length(peak.wave)) < 1e-3 * length(wave) &&
                   std::abs(wave.x * peak.wave.x + wave.y * peak.wave.y) < 1e-2 * wave.x * wave.x;
        });
        if (!sameCell)
            candidates.push_back({{peak.wave, found ? partner.wave : turned(peak.wave)}, power});
    }
    std::sort(candidates.begin(), candidates.end(),
              [](const Candidate &a, const Candidate &b) { return a.power > b.power; });
    if (!candidates.empty())
        std::erase_if(candidates,
                      [most = candidates[0].power](const Candidate &c) { return c.power < 0.7 * most; });
    if (candidates.size() > kMostCandidates)
        candidates.resize(kMostCandidates);
    return candidates;
}

double evennessOf(const BitPage &page, const PageWindow &window, const Lattice &lattice)
{
    Folding folding(page, window, 500'000);
    folding.lay(lattice);
    return folding.cell().evenness();
}

FoundLattice rough(const BitPage &page, const PageWindow &window, const Lattice &lattice)
{
    const Lattice better = roughLattice(page, window, lattice);
    return {better, evennessOf(page, window, better)};
}

// The candidate over whose cells the patch folds best.
FoundLattice bestOf(const BitPage &page, const PageWindow &window, const std::vector<Candidate> &candidates)
{
    FoundLattice best = rough(page, window, candidates[0].lattice);
    for (std::size_t i = 1; i < candidates.size(); ++i) {
        const FoundLattice found = rough(page, window, candidates[i].lattice);
        if (found.evenness > best.evenness + 0.05)
            best = found;
    }
    return best;
}

// A screen of lines folds as well over one wave as over two.
FoundLattice dotsOrLines(const BitPage &page, const PageWindow &patch, const FoundLattice &dots)
{
    const FoundLattice lines = rough(page, patch, {{}, dots.lattice.across});
    return lines.evenness > 0.93 * dots.evenness ? lines : dots;
}

}  // namespace

std::optional<Lattice> findLattice(const BitPage &page, const PageWindow &window)
{
    std::optional<FoundLattice> best;
    const int smaller = std::min(window.width, window.height);
    for (int shrink = 1; smaller / shrink >= kSmallestPatch; shrink *= 4) {
        const Spectrum spectrum(page, window, shrink);
        const int patch = std::max(spectrum.across(), spectrum.down());
        const bool whole = patch >= std::max(window.width, window.height) / 2;
        const std::vector<Candidate> candidates = candidatesOf(spectrum);
        if (candidates.empty() || (length(candidates[0].lattice.across) * patch < kGoodPeriods && !whole))
            continue;  // too long a wave for this patch: look at a larger one, more coarsely
        const PageWindow middle = middleOf(window, patch);
        const FoundLattice first = dotsOrLines(page, middle, bestOf(page, middle, candidates));
        if (first.evenness < kWorthFitting)
            continue;
        const Lattice lattice = refineLattice(page, window, first.lattice, patch);
        const FoundLattice found{lattice, evennessOf(page, window, lattice)};
        if (length(found.lattice.down) * smaller >= kLeastPeriods && (!best || found.evenness > best->evenness))
            best = found;
        if (found.evenness > 2 * kLeastEvenness || whole)
            break;
    }
    if (best && best->evenness < kLeastEvenness)
        return {};
    return best ? std::optional(best->lattice) : std::nullopt;
}

}  // namespace riders::meter
