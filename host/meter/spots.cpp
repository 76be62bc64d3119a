// Spot functions, and how like the dots on a page are to them.
#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "meter/lattice.h"
#include "meter/meter.h"

namespace riders {

namespace {

constexpr int kSteps = 16;         // places tried for the cell's beginning, along each axis
constexpr int kPoints = 16'384;     // of an ideal cell, to find where its ink ends
constexpr int kCoarseSample = 5'000, kFineSample = 40'000;

double ellipse(double x, double y)
{
    const double a = std::abs(x), b = std::abs(y), w = 3 * a + 4 * b - 3;
    if (w < 0)
        return 1 - (a * a + b * b / 0.5625) / 4;
    return w > 1 ? ((1 - a) * (1 - a) + (1 - b) * (1 - b) / 0.5625) / 4 - 1 : 0.5 - w;
}

double diamond(double x, double y)
{
    const double a = std::abs(x), b = std::abs(y);
    if (a + b <= 0.75)
        return 1 - (a * a + b * b);
    return a + b <= 1.23 ? 1 - (0.85 * a + b) : (a - 1) * (a - 1) + (b - 1) * (b - 1) - 1;
}

double euclidean(double x, double y)
{
    const double a = std::abs(x), b = std::abs(y);
    return a + b <= 1 ? 1 - (a * a + b * b) : (a - 1) * (a - 1) + (b - 1) * (b - 1) - 1;
}

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
    // Cells wider than the sample's pixels would show are looked at every few pixels.
    const int step = std::max(1, int(std::sqrt(double(width) * height / pixels)));
    Sample sample;
    for (int y = top; y < top + height; y += step)
        for (int x = left; x < left + width; x += step) {
            constexpr float whole = 4294967296.0F;
            sample.u.push_back(float(phaseAt(reading.waves[0], x, y)) / whole);
            sample.v.push_back(float(phaseAt(reading.waves[1], x, y)) / whole);
            sample.inked.push_back(page.at(x, y));
            sample.mean += sample.inked.back();
        }
    sample.mean /= double(std::max<std::size_t>(1, sample.inked.size()));
    return sample;
}

// A spot function with the value from which on it inks.
class IdealCell {
public:
    IdealCell(const SpotFunction &spot, double ink) : spot_(spot)
    {
        std::vector<double> values;
        // Steps that fill a square evenly and never repeat a row or column, so
        // that functions of one of them alone have as many values.
        for (int i = 0; i < kPoints; ++i)
            values.push_back(value(std::fmod(0.7548776662 * i, 1), std::fmod(0.5698402910 * i, 1)));
        const std::size_t inked = std::size_t(std::lround(ink * double(values.size())));
        if (inked == 0 || inked >= values.size())
            return;
        std::nth_element(values.begin(), values.begin() + long(inked), values.end(), std::greater<>());
        const double next = values[inked];
        const double least = *std::min_element(values.begin(), values.begin() + long(inked));
        from_ = (next + least) / 2;
    }

    bool inked(double u, double v) const { return value(u, v) >= from_; }

private:
    double value(double u, double v) const
    {
        const double result = spot_(2 * (u - std::floor(u)) - 1, 2 * (v - std::floor(v)) - 1);
        return std::isfinite(result) ? result : 0;
    }

    const SpotFunction &spot_;
    double from_ = 0;
};

struct Place {
    double u = 0, v = 0;
    int turns = 0;
    double correlation = -2;
};

double correlationAt(const Sample &sample, const IdealCell &ideal, const Place &place)
{
    double both = 0, ones = 0;
    const double n = double(sample.inked.size());
    for (std::size_t i = 0; i < sample.inked.size(); ++i) {
        float u = sample.u[i] - float(place.u), v = sample.v[i] - float(place.v);
        for (int turn = 0; turn < place.turns; ++turn) {
            const float old = u;
            u = v, v = -old;
        }
        if (ideal.inked(u, v))
            both += sample.inked[i], ++ones;
    }
    const double mean = ones / n;
    const double spread = std::sqrt(mean * (1 - mean) * sample.mean * (1 - sample.mean));
    return spread > 0 ? (both / n - mean * sample.mean) / spread : -1;
}

Place bestOnGrid(const Sample &sample, const IdealCell &ideal, bool lines)
{
    Place best;
    for (int turns = 0; turns < (lines ? 1 : 4); ++turns)
        for (int v = 0; v < kSteps; ++v)
            for (int u = 0; u < (lines ? 1 : kSteps); ++u) {
                Place place{double(u) / kSteps, double(v) / kSteps, turns, 0};
                place.correlation = correlationAt(sample, ideal, place);
                if (place.correlation > best.correlation)
                    best = place;
            }
    return best;
}

Place bestNear(const Sample &sample, const IdealCell &ideal, Place best)
{
    best.correlation = correlationAt(sample, ideal, best);
    for (double step = 0.5 / kSteps; step > 1e-3;) {
        bool better = false;
        for (const auto &[du, dv] : {std::pair{step, 0.0}, {-step, 0.0}, {0.0, step}, {0.0, -step}}) {
            Place place{best.u + du, best.v + dv, best.turns, 0};
            place.correlation = correlationAt(sample, ideal, place);
            if (place.correlation > best.correlation)
                best = place, better = true;
        }
        if (!better)
            step /= 2;
    }
    return best;
}

bool measurable(const BitPage &page, const ScreenReading &reading)
{
    const PageWindow cut = cutToPage(page, reading.window);
    return reading.kind != ScreenKind::none && !cut.empty() && cut.left == reading.window.left &&
           cut.top == reading.window.top && cut.width == reading.window.width &&
           cut.height == reading.window.height;
}

}  // namespace

Likeness likenessTo(const BitPage &page, const ScreenReading &reading, const SpotFunction &spot)
{
    if (!measurable(page, reading))
        return {};
    const Sample coarse = sampleOf(page, reading, kCoarseSample), fine = sampleOf(page, reading, kFineSample);
    const IdealCell ideal(spot, reading.ink);
    const Place best = bestNear(fine, ideal, bestOnGrid(coarse, ideal, reading.kind == ScreenKind::lines));
    return {best.correlation, best.turns};
}

const std::vector<NamedSpot> &namedSpots()
{
    static const std::vector<NamedSpot> spots = {
        {"Round", [](double x, double y) { return 1 - (x * x + y * y); }},
        {"Ellipse", ellipse},
        {"Line", [](double, double y) { return -std::abs(y); }},
        {"Square", [](double x, double y) { return -std::max(std::abs(x), std::abs(y)); }},
        {"Diamond", diamond},
        {"Cross", [](double x, double y) { return -std::min(std::abs(x), std::abs(y)); }},
        {"Euclidean", euclidean},
        {"CosineDot",
         [](double x, double y) {
             return (std::cos(std::numbers::pi * x) + std::cos(std::numbers::pi * y)) / 2;
         }},
        {"Rhomboid", [](double x, double y) { return (0.9 * std::abs(x) + std::abs(y)) / 2; }},
    };
    return spots;
}

std::string nearestSpot(const BitPage &page, const ScreenReading &reading)
{
    std::string nearest;
    double most = -2;
    for (const NamedSpot &spot : namedSpots()) {
        const double correlation = likenessTo(page, reading, spot.value).correlation;
        if (correlation > most + 0.002)
            most = correlation, nearest = spot.name;
    }
    return reading.kind == ScreenKind::none ? std::string() : nearest;
}

}  // namespace riders
