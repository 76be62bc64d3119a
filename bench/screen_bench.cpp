// How close the dots on film come to what was asked for.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <stdexcept>

#include "benches.h"
#include "screen_film.h"
#include "support/screen_pairs.h"

namespace {

namespace meter = riders::meter;

constexpr double tints[] = {0.05, 0.10, 0.25, 0.50, 0.75, 0.90, 0.95};
constexpr int shapeTint = 2;  // of 25 %
constexpr const char *dot = "{dup mul exch dup mul add 1 exch sub}";

// Errors, and the pair with the largest one.
struct Series {
    std::vector<double> values;
    ScreenPair pair{};
    void add(double value, const ScreenPair &of)
    {
        if (values.empty() || value > worst())
            pair = of;
        values.push_back(value);
    }
    double worst() const { return values.empty() ? 0 : *std::max_element(values.begin(), values.end()); }
    double median() const
    {
        if (values.empty())
            return 0;
        std::vector<double> sorted = values;
        std::sort(sorted.begin(), sorted.end());
        return sorted[sorted.size() / 2];
    }
};

struct Errors {
    Series frequency, angle;  // %, degrees
    void add(const meter::ScreenReading &reading, const ScreenPair &pair)
    {
        const bool none = reading.kind == meter::ScreenKind::none;
        frequency.add(none ? 100 : 100 * std::abs(reading.frequency / pair.frequency - 1), pair);
        angle.add(none ? 45 : std::abs(std::remainder(reading.angle - pair.angle, 90)), pair);
    }
};

struct Accuracy {
    Errors fills, images;
    Series ink, beat;  // percent; relative to the screen's own wave
    Series unlike;     // 1 less the correlation, of cells of 8 pixels and more
};

// A fill and an image of half ink side by side, two inches each; then a page of tints of an inch.
void writeJob(const std::filesystem::path &file)
{
    std::ofstream out(file);
    out << "%!PS\n{} settransfer\n.5 setgray 0 0 144 144 rectfill gsave 144 0 translate 144 144 scale\n"
           "1 1 8 [1 0 0 1 0 0] {(\\200)} image grestore showpage\n";
    int at = 0;
    for (double tint : tints) {
        out << 1 - tint << " setgray " << at % 4 * 72 << " " << at / 4 * 72 << " 72 72 rectfill\n";
        ++at;
    }
    out << "showpage\n";
}

meter::PageWindow inches(double dpi, double left, double top, double side)
{
    return {int(left * dpi), int(top * dpi), int(side * dpi), int(side * dpi)};
}

void readPages(const Workplace &place, double dpi, const ScreenPair &pair, Accuracy &accuracy)
{
    {
        const Film film(place / "page1.pbm", dpi);
        const meter::ScreenReading fill = meter::readScreen(film.page(), inches(dpi, 0, 0, 2));
        accuracy.fills.add(fill, pair);
        accuracy.images.add(meter::readScreen(film.page(), inches(dpi, 2, 0, 2)), pair);
        accuracy.beat.add(fill.beat.strength, pair);
    }
    const auto roundDot = meter::namedSpots().front().value;
    const Film film(place / "page2.pbm", dpi);
    for (int i = 0; i < int(std::size(tints)); ++i) {
        const auto window = inches(dpi, i % 4, 1 - i / 4, 1);
        const meter::ScreenReading reading = meter::readScreen(film.page(), window);
        accuracy.ink.add(100 * std::abs(reading.ink - tints[i]), pair);
        if (i == shapeTint && dpi / pair.frequency >= 8)
            accuracy.unlike.add(1 - meter::likenessTo(film.page(), reading, roundDot).correlation, pair);
    }
}

using Prepare = std::string (*)(const std::filesystem::path &riders, const Workplace &place,
                                const ScreenPair &pair);

std::string text(double value)
{
    char digits[32];
    std::snprintf(digits, sizeof digits, "%g", value);
    return digits;
}

std::string prepared(const Workplace &place, const std::string &postScript)
{
    std::ofstream(place / "before.ps") << "%!PS\n" << postScript << "\n";
    return place / "before.ps";
}

std::string withSetscreen(const std::filesystem::path &, const Workplace &place, const ScreenPair &pair)
{
    return prepared(place, text(pair.frequency) + " " + text(pair.angle) + " " + dot + " setscreen");
}

std::string withAccurateScreens(const std::filesystem::path &, const Workplace &place, const ScreenPair &pair)
{
    return prepared(place, "<< /HalftoneType 1 /AccurateScreens true /Frequency " + text(pair.frequency) +
                               " /Angle " + text(pair.angle) + " /SpotFunction " + dot + " >> sethalftone");
}

std::string withRiders(const std::filesystem::path &riders, const Workplace &place, const ScreenPair &pair)
{
    std::string file = place / "fragment";
    std::filesystem::remove(file);
    if (runProcess({riders, "make", "-o", file, "--frequency", text(pair.frequency), "--angle", text(pair.angle),
                    "--spot", "Round"})
            .status != 0)
        throw std::runtime_error("riders make failed");
    return file;
}

void printAccuracy(const char *method, const Accuracy &a)
{
    std::printf("%-16s", method);
    for (const Errors *errors : {&a.fills, &a.images})
        std::printf(" %7.3f %7.3f %6.3f %6.3f", errors->frequency.worst(), errors->frequency.median(),
                    errors->angle.worst(), errors->angle.median());
    std::printf(" %7.2f %7.2f %8.4f %6.2f\n", a.ink.worst(), a.ink.median(), 1 - a.unlike.worst(), a.beat.worst());
    std::fflush(stdout);
}

// The errors against the aims, and where they are largest.
void printAims(const Accuracy &a, double dpi)
{
    const double frequency = dpi > 2000 ? 0.5 : 0.4, angle = dpi > 2000 ? 0.4 : 0.3;
    const auto print = [](const char *what, const Series &series, double aim) {
        std::printf("  %-24s %8.3f at %g lpi, %g degrees; aim %g  %s\n", what, series.worst(),
                    series.pair.frequency, series.pair.angle, aim, series.worst() <= aim ? "reached" : "missed");
    };
    print("fills, frequency, %", a.fills.frequency, frequency);
    print("fills, angle", a.fills.angle, angle);
    print("images, frequency, %", a.images.frequency, frequency);
    print("images, angle", a.images.angle, angle);
    print("ink, %", a.ink, 0.7);
    print("shape, unlike", a.unlike, 0.01);
    print("beat", a.beat, 0.35);
}

// The number of pairs on which ours is further off than theirs by more than the meter's own error.
int worseThan(const Errors &ours, const Errors &theirs)
{
    int count = 0;
    for (std::size_t i = 0; i < ours.frequency.values.size(); ++i)
        count += ours.frequency.values[i] > theirs.frequency.values[i] + 0.02 ||
                 ours.angle.values[i] > theirs.angle.values[i] + 0.01;
    return count;
}

void measureEvery(const std::filesystem::path &riders, std::size_t step)
{
    const std::vector<ScreenPair> pairs = screenPairs();
    const Workplace place;
    const std::string job = place / "job.ps";
    writeJob(job);
    const std::pair<const char *, Prepare> methods[] = {
        {"setscreen", withSetscreen}, {"AccurateScreens", withAccurateScreens}, {"riders", withRiders}};
    for (double dpi : {600.0, 1200.0, 2400.0}) {
        std::printf(
            "\nAsked for and on film at %g dpi, %zu pairs; worst and median\n%-16s %-29s %-29s %-15s %8s %6s\n",
            dpi, (pairs.size() + step - 1) / step, "", " fills: %, degrees", " images: %, degrees", " ink, %",
            "shape", "beat");
        Accuracy accuracies[3];
        for (int method = 0; method < 3; ++method) {
            Accuracy &accuracy = accuracies[method];
            for (std::size_t i = 0; i < pairs.size(); i += step) {
                runToFilm(place.path(), {methods[method].second(riders, place, pairs[i]), job}, dpi, 4, 2);
                readPages(place, dpi, pairs[i], accuracy);
            }
            printAccuracy(methods[method].first, accuracy);
        }
        printAims(accuracies[2], dpi);
        std::printf("  worse than AccurateScreens: fills on %d pairs, images on %d (aim 0)\n",
                    worseThan(accuracies[2].fills, accuracies[1].fills),
                    worseThan(accuracies[2].images, accuracies[1].images));
    }
}

}  // namespace

void measureScreens(const std::filesystem::path &riders)
{
    measureEvery(riders, 1);
}

void measureScreensSample(const std::filesystem::path &riders)
{
    measureEvery(riders, 7);
}
