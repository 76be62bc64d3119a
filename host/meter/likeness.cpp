// How closely the dots on a page resemble those of a spot function.
#include <algorithm>
#include <cmath>

#include "meter/lattice.h"
#include "meter/meter.h"

namespace riders::meter {

namespace {

constexpr std::size_t kStarts = 4;
constexpr int kCoarseSample = 6'000, kFineSample = 40'000;  // pixels

// Pixels of the window's middle, where each lies in the cell (0 to 1), and its ink.
struct Sample {
    std::vector<float> u, v;
    std::vector<char> inked;
    double mean = 0;
};

Sample sampleOf(const BitPage &page, const ScreenReading &reading, int pixels)
{
    const PageWindow &window = reading.window;
    const int wanted = std::max(int(std::sqrt(pixels)), int(3 * reading.cellPixels));
    const int width = std::min(window.width, wanted), height = std::min(window.height, wanted);
    const int left = window.left + (window.width - width) / 2, top = window.top + (window.height - height) / 2;
    // Cells too wide for so few pixels are looked at every few pixels.
    const int step = std::max(1, int(std::sqrt(double(width) * height / pixels)));
    Sample sample;
    for (int y = top; y < top + height; y += step)
        for (int x = left; x < left + width; x += step) {
            constexpr float whole = 4294967296.0F;
            // Counted from the window's middle, as in the reading's cell.
            const double fromX = x - (window.left + (window.width - 1) / 2.0);
            const double fromY = y - (window.top + (window.height - 1) / 2.0);
            sample.u.push_back(float(phaseAt(reading.waves[0], fromX, fromY)) / whole);
            sample.v.push_back(float(phaseAt(reading.waves[1], fromX, fromY)) / whole);
            sample.inked.push_back(page.at(x, y));
            sample.mean += sample.inked.back();
        }
    sample.mean /= double(std::max<std::size_t>(1, sample.inked.size()));
    return sample;
}

// Where in the cell the spot function's cell begins, and how it is turned.
struct Place {
    double u = 0, v = 0;
    int turns = 0;
    double correlation = -2;
};

bool better(const Place &a, const Place &b)
{
    return a.correlation > b.correlation;
}

double valueAt(const SpotFunction &spot, double u, double v, int turns)
{
    for (int turn = 0; turn < turns; ++turn) {
        const double old = u;
        u = v, v = -old;
    }
    const double value = spot(2 * (u - std::floor(u)) - 1, 2 * (v - std::floor(v)) - 1);
    return std::isfinite(value) ? value : 0;
}

// Marks the highest values, as many as make up the ink. Of equal ones on the
// border some are taken, evenly spread.
std::vector<char> highest(const std::vector<double> &values, double ink)
{
    std::vector<char> inked(values.size(), 0);
    const std::size_t count = std::size_t(std::lround(ink * double(values.size())));
    if (count == 0 || count >= values.size()) {
        std::fill(inked.begin(), inked.end(), count > 0);
        return inked;
    }
    std::vector<double> sorted = values;
    std::nth_element(sorted.begin(), sorted.begin() + long(count) - 1, sorted.end(), std::greater<>());
    const double last = sorted[count - 1];
    std::size_t above = 0, equal = 0;
    for (double value : values)
        above += value > last, equal += value == last;
    std::size_t seen = 0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        inked[i] = values[i] > last;
        if (values[i] == last) {
            inked[i] = (seen + 1) * (count - above) / equal > seen * (count - above) / equal;
            ++seen;
        }
    }
    return inked;
}

double correlationOf(double both, double one, double other, double squareOne, double squareOther, double n)
{
    const double spread = std::sqrt((squareOne - one * one / n) * (squareOther - other * other / n));
    return spread > 0 ? (both - one * other / n) / spread : -1;
}

// Where a cell's pixels lie regularly, several have the value at which the ink
// ends, and any of them may be the inked ones: those of the page are taken.
double correlationAt(const Sample &sample, const SpotFunction &spot, const Place &place)
{
    constexpr double alike = 0.002;  // in spot values; what a lattice read from pixels leaves
    std::vector<double> values(sample.inked.size());
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = valueAt(spot, sample.u[i] - place.u, sample.v[i] - place.v, place.turns);
    const std::size_t count = std::size_t(std::lround(sample.mean * double(values.size())));
    if (count == 0 || count >= values.size())
        return -1;
    std::vector<double> sorted = values;
    std::nth_element(sorted.begin(), sorted.begin() + long(count) - 1, sorted.end(), std::greater<>());
    const double last = sorted[count - 1];
    std::size_t above = 0, right = 0, free = 0, below = 0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const bool inside = values[i] > last + alike;
        above += inside, right += inside && sample.inked[i];
        below += values[i] < last - alike;
        free += !inside && values[i] >= last - alike && sample.inked[i];
    }
    if (above + below == 0)
        return -1;  // a function that is the same everywhere says nothing
    const double both = double(right + std::min(free, count - above));
    return correlationOf(both, double(count), double(count), double(count), double(count), double(values.size()));
}

// The reading's own cell against the ideal one, bin by bin.
class CellSearch {
public:
    CellSearch(const ScreenReading &reading, const SpotFunction &spot)
        : reading_(reading), spot_(spot), side_(reading.cellSide)
    {
    }

    std::vector<Place> best()
    {
        const bool lines = reading_.kind == ScreenKind::lines;
        std::vector<Place> places;
        for (int turns = 0; turns < (lines ? 1 : 4); ++turns) {
            fill(turns);
            for (int v = 0; v < side_; ++v)
                for (int u = 0; u < (lines ? 1 : side_); ++u)
                    places.push_back({double(u) / side_, double(v) / side_, turns, correlation(u, v)});
        }
        std::sort(places.begin(), places.end(), better);
        places.resize(std::min(places.size(), kStarts));
        return places;
    }

private:
    void fill(int turns)
    {
        std::vector<double> values;
        for (int v = 0; v < side_; ++v)
            for (int u = 0; u < side_; ++u)
                values.push_back(valueAt(spot_, (u + 0.5) / side_, (v + 0.5) / side_, turns));
        const std::vector<char> inked = highest(values, reading_.ink);
        ideal_.assign(inked.begin(), inked.end());
    }

    double correlation(int du, int dv) const
    {
        float both = 0, one = 0, other = 0, squareOne = 0, squareOther = 0;
        for (int v = 0; v < side_; ++v) {
            const float *cell = &reading_.cell[std::size_t((v + dv) % side_) * side_];
            const float *ideal = &ideal_[std::size_t(v) * side_];
            for (int u = 0; u < side_; ++u) {
                const float a = cell[u + du < side_ ? u + du : u + du - side_], b = ideal[u];
                both += a * b, one += a, other += b, squareOne += a * a, squareOther += b * b;
            }
        }
        return correlationOf(both, one, other, squareOne, squareOther, double(side_) * side_);
    }

    const ScreenReading &reading_;
    const SpotFunction &spot_;
    int side_;
    std::vector<float> ideal_;
};

Place climbed(const Sample &sample, const SpotFunction &spot, Place best, double step, double least)
{
    best.correlation = correlationAt(sample, spot, best);
    while (step > least) {
        Place next = best;
        for (const auto &[du, dv] :
             {std::pair{1, 0}, {-1, 0}, {0, 1}, {0, -1}, {1, 1}, {-1, -1}, {1, -1}, {-1, 1}}) {
            Place place{best.u + du * step, best.v + dv * step, best.turns, 0};
            place.correlation = correlationAt(sample, spot, place);
            next = std::max(next, place, [](const Place &a, const Place &b) { return better(b, a); });
        }
        if (next.correlation > best.correlation)
            best = next;
        else
            step /= 2;
    }
    return best;
}

bool measurable(const BitPage &page, const ScreenReading &reading)
{
    const PageWindow &window = reading.window, cut = cutToPage(page, window);
    return reading.kind != ScreenKind::none && !cut.empty() && cut.width == window.width &&
           cut.height == window.height && reading.cellSide > 0 &&
           reading.cell.size() == std::size_t(reading.cellSide) * reading.cellSide;
}

Place roughPlace(const BitPage &page, const ScreenReading &reading, const SpotFunction &spot)
{
    const Sample sample = sampleOf(page, reading, kCoarseSample);
    const double bin = 1.0 / reading.cellSide;
    Place best;
    for (const Place &start : CellSearch(reading, spot).best()) {
        const Place place = climbed(sample, spot, start, bin, bin / 4);
        if (better(place, best))
            best = place;
    }
    return best;
}

}  // namespace

Likeness likenessTo(const BitPage &page, const ScreenReading &reading, const SpotFunction &spot)
{
    if (!measurable(page, reading))
        return {};
    const Sample sample = sampleOf(page, reading, kFineSample);
    const double bin = 1.0 / reading.cellSide;
    const Place best = climbed(sample, spot, roughPlace(page, reading, spot), bin / 4, bin / 64);
    return {best.correlation, best.turns};
}

double likenessToNamed(const BitPage &page, const ScreenReading &reading, const std::string &spot)
{
    for (const std::vector<NamedSpot> *known : {&namedSpots(), &rarerSpots()})
        for (const NamedSpot &named : *known)
            if (named.name == spot)
                return likenessTo(page, reading, named.value).correlation;
    return -1;
}

std::string nearestSpot(const BitPage &page, const ScreenReading &reading)
{
    if (!measurable(page, reading))
        return {};
    std::string nearest;
    double most = -2;
    for (const NamedSpot &spot : namedSpots()) {
        const double correlation = roughPlace(page, reading, spot.value).correlation;
        if (correlation > most + 0.004)
            most = correlation, nearest = spot.name;
    }
    return nearest;
}

}  // namespace riders::meter
