#include "meter/meter.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "meter/find_lattice.h"
#include "meter/fold.h"
#include "meter/refine_lattice.h"
#include "meter/spectrum.h"
#include "meter/tint_finder.h"

namespace riders::meter {

namespace {

constexpr int kSmallestSide = 32;  // pixels

double within(double degrees, double turn)
{
    const double rest = std::fmod(degrees, turn);
    const double positive = rest < 0 ? rest + turn : rest;
    return positive >= turn ? 0 : positive;  // -1e-17 + 90 is 90
}

double directionOf(const Wave &wave)
{
    return std::atan2(wave.y, wave.x) * 180 / std::numbers::pi;
}

// The same cells, their x axis between right and down.
Lattice upright(Lattice lattice)
{
    for (int turns = 0; turns < 4 && (lattice.across.x <= 0 || lattice.across.y < 0); ++turns)
        lattice = {lattice.down, {-lattice.across.x, -lattice.across.y}};
    return lattice;
}

// The size and direction of a cell are the mean of its two axes.
void setDots(ScreenReading &reading, const Lattice &lattice, double dpi)
{
    const Wave back{lattice.down.y, -lattice.down.x};  // a quarter turn anticlockwise
    const Wave mean{(lattice.across.x + back.x) / 2, (lattice.across.y + back.y) / 2};
    reading.kind = ScreenKind::dots;
    reading.frequency = length(mean) * dpi;
    reading.angle = within(directionOf(mean), 90);
    reading.cellPixels = 1 / length(mean);
}

void setLines(ScreenReading &reading, const Lattice &lattice, double dpi)
{
    reading.kind = ScreenKind::lines;
    reading.frequency = length(lattice.down) * dpi;
    reading.angle = within(directionOf(lattice.down) - 90, 180);
    reading.cellPixels = 1 / length(lattice.down);
}

// The window's ink, with less and less weight towards its edges over a cell's
// width, so that it does not matter how they cut the cells.
double inkOf(const BitPage &page, const PageWindow &window, double cellPixels)
{
    const int ramp = std::clamp(int(std::lround(cellPixels)), 1, std::min(window.width, window.height) / 2);
    const auto weight = [&](int at, int size) { return std::min({at + 0.5, size - at - 0.5, ramp - 0.0}) / ramp; };
    const int right = window.width - ramp;
    double ones = 0, rows = 0;
    for (int y = 0; y < window.height; ++y) {
        double row = inkInRow(page, window.top + y, window.left + ramp, window.left + right);
        for (int x = 0; x < ramp; ++x)
            row += weight(x, window.width) * (page.at(window.left + x, window.top + y) +
                                              page.at(window.left + window.width - 1 - x, window.top + y));
        ones += row * weight(y, window.height);
        rows += weight(y, window.height);
    }
    return ones / (rows * (window.width - ramp));
}

void setCell(ScreenReading &reading, const BitPage &page, const Lattice &lattice)
{
    Folding folding(page, reading.window, 2'000'000);
    folding.lay(lattice);
    const FoldedCell &cell = folding.cell();
    const std::vector<float> shares = cell.shares(0);
    reading.ink = inkOf(page, reading.window, reading.cellPixels);
    reading.evenness = cell.evenness();
    reading.cellSide = cell.rows;
    for (int v = 0; v < cell.rows; ++v)
        for (int u = 0; u < cell.rows; ++u)
            reading.cell.push_back(shares[std::size_t(v) * cell.columns + u % cell.columns]);
}

// The share of a wave that the blocks of a shrunken patch leave.
double blockLoss(const Wave &wave, int shrink)
{
    const auto along = [&](double w) {
        const double x = std::numbers::pi * w * shrink;
        return std::abs(x) < 1e-9 ? 1 : std::sin(x) / x;
    };
    return shrink == 1 ? 1 : std::abs(along(wave.x) * along(wave.y));
}

void setBeat(ScreenReading &reading, const BitPage &page, const Lattice &lattice)
{
    const int smaller = std::min(reading.window.width, reading.window.height);
    // A cell of 16 pixels is one of 16 also where it is measured as 15.9999.
    const int shrink = std::clamp(int(reading.cellPixels / 4 + 0.001), 1, std::max(1, smaller / kSmallestSide));
    const Spectrum spectrum(page, reading.window, shrink);
    const double frequency = 1 / reading.cellPixels;
    const double below = std::min(0.8 * frequency, frequency - 3.0 / std::min(spectrum.across(), spectrum.down()));
    double own = 0;
    for (const Wave &wave : {lattice.across, lattice.down})
        if (length(wave) > 0)
            own = std::max(own, spectrum.peakNear(wave).strength / blockLoss(wave, shrink));
    const Spectrum::Peak beat = spectrum.strongestBelow(below);
    if (own <= 0 || beat.strength <= 0)
        return;
    reading.beat = {beat.strength / blockLoss(beat.wave, shrink) / own, length(beat.wave) * page.dpi,
                    within(directionOf(beat.wave), 180)};
}

// Starts from a lattice that is nearly right, if there already is one.
ScreenReading readWindow(const BitPage &page, const PageWindow &window, const std::optional<Lattice> &near = {})
{
    ScreenReading reading;
    reading.window = window;
    reading.ink = inkShare(page, window);
    if (std::min(window.width, window.height) < kSmallestSide || reading.ink <= 0 || reading.ink >= 1)
        return reading;
    std::optional<Lattice> found;
    if (near)
        found = refineLattice(page, window, *near, std::max(window.width, window.height));
    else
        found = findLattice(page, window);
    if (!found)
        return reading;
    const bool lines = found->lines();
    const Lattice lattice = lines ? *found : upright(*found);
    lines ? setLines(reading, lattice, page.dpi) : setDots(reading, lattice, page.dpi);
    reading.waves[0] = lines ? Wave{lattice.down.y, -lattice.down.x} : lattice.across;
    reading.waves[1] = lattice.down;
    setCell(reading, page, lattice);
    setBeat(reading, page, lattice);
    return reading;
}

// Cuts strips off the sides where the pixels do not agree with the cell: a
// neighbouring tint that the ink alone did not reveal. Cuts nothing when most disagree.
PageWindow trimmed(const BitPage &page, const ScreenReading &reading, const Lattice &lattice)
{
    const CellFit fit(page, reading.window, lattice);
    const double most = 1.5 * fit.disagreement(reading.window) + 0.03;
    const int strip = std::max(kSmallestSide, int(page.dpi / 10));
    PageWindow window = reading.window;
    for (bool more = true; more && window.width > 3 * strip && window.height > 3 * strip;) {
        const int right = window.left + window.width - strip, bottom = window.top + window.height - strip;
        const bool left = fit.disagreement({window.left, window.top, strip, window.height}) > most;
        const bool top = fit.disagreement({window.left, window.top, window.width, strip}) > most;
        const bool atRight = fit.disagreement({right, window.top, strip, window.height}) > most;
        const bool atBottom = fit.disagreement({window.left, bottom, window.width, strip}) > most;
        window.left += left * strip, window.width -= (left + atRight) * strip;
        window.top += top * strip, window.height -= (top + atBottom) * strip;
        more = left || top || atRight || atBottom;
    }
    return window;
}

ScreenReading readTint(const BitPage &page, const PageWindow &tint)
{
    ScreenReading reading = readWindow(page, tint);
    if (reading.kind == ScreenKind::none)
        return reading;
    const Lattice lattice{reading.kind == ScreenKind::lines ? Wave{} : reading.waves[0], reading.waves[1]};
    const PageWindow window = trimmed(page, reading, lattice);
    return window.width == tint.width && window.height == tint.height ? reading
                                                                      : readWindow(page, window, lattice);
}

}  // namespace

ScreenReading readScreen(const BitPage &page, const std::optional<PageWindow> &window)
{
    if (window)
        return readWindow(page, cutToPage(page, *window));
    ScreenReading first;
    for (const PageWindow &tint : findTints(page)) {
        ScreenReading reading = readTint(page, tint);
        if (reading.kind != ScreenKind::none)
            return reading;
        if (first.window.empty())
            first = reading;
    }
    return first;
}

}  // namespace riders::meter
