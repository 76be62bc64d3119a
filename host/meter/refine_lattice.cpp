#include "meter/refine_lattice.h"

#include <algorithm>
#include <cmath>

#include "meter/fold.h"

namespace riders::meter {

namespace {

constexpr int kFoldBins = FoldedCell::kSide;
constexpr double kWide = kFoldBins / 10.0;  // bins; a bell curve that leads to the right place from far away

Lattice sum(const Lattice &lattice, const Lattice &by, double factor)
{
    const auto add = [&](const Wave &wave, const Wave &step) {
        return Wave{wave.x + step.x * factor, wave.y + step.y * factor};
    };
    return {add(lattice.across, by.across), add(lattice.down, by.down)};
}

double product(const Lattice &a, const Lattice &b)
{
    return a.across.x * b.across.x + a.across.y * b.across.y + a.down.x * b.down.x + a.down.y * b.down.y;
}

// Whether what is left is chance: steps this small that no longer shrink lead nowhere.
bool isChance(double effect, double last)
{
    return effect < 1e-4 || (effect < 2e-3 && effect > 0.7 * last);
}

// Takes that many steps, or fewer once they do nothing. Where dots are small in their cells
// steps go too far: one that makes the fold worse is halved, and one that turns
// back makes the later ones shorter.
void improve(Folding &folding, Lattice &lattice, int steps, double spread, double slopeSpread)
{
    folding.lay(lattice);
    double factor = 1, lastEffect = 1;
    Lattice last{};
    for (int step = 0; step < steps; ++step) {
        const double before = folding.cell().evenness();
        const Lattice by = folding.correction(spread, slopeSpread);
        const double effect = folding.effect(by);
        if (isChance(effect, lastEffect))
            return;
        lastEffect = effect;
        if (product(by, last) < 0)
            factor /= 2;
        last = by;
        double part = std::min(factor, 0.3 / effect);
        Lattice better = sum(lattice, by, part);
        folding.lay(better);
        for (int halved = 0; before > 0.1 && folding.cell().evenness() < 0.998 * before; ++halved) {
            if (halved == 4)
                return;
            part /= 2;
            better = sum(lattice, by, part);
            folding.lay(better);
        }
        lattice = better;
    }
}

// A pixel covers this many bins; a bell narrower than half of one would find gaps between them.
double narrowest(const Lattice &lattice)
{
    return std::max(1.0, kFoldBins * length(lattice.down) / 2);
}

}  // namespace

Lattice roughLattice(const BitPage &page, const PageWindow &window, Lattice lattice)
{
    Folding folding(page, window, 150'000);
    improve(folding, lattice, 4, kWide, kWide);
    improve(folding, lattice, 4, narrowest(lattice), narrowest(lattice));
    return lattice;
}

Lattice refineLattice(const BitPage &page, const PageWindow &window, Lattice lattice, int patch)
{
    const int whole = std::max(window.width, window.height);
    for (int side = patch; side<whole; side = side> whole / 3 ? whole : side * 2) {
        Folding folding(page, middleOf(window, side), 500'000);
        improve(folding, lattice, 4, kWide, kWide);
    }
    // Some of the pixels lead as near as a blurred cell can; for the rest of the way more of them are worth their
    // time.
    Folding some(page, window, 500'000);
    improve(some, lattice, 4, kWide, kWide);
    const double narrow = narrowest(lattice);
    improve(some, lattice, 10, narrow, narrow);
    Folding many(page, window, 2'000'000);
    improve(many, lattice, 10, 0, narrow);
    return lattice;
}

}  // namespace riders::meter
