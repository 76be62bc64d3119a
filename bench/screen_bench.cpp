// How near the dots on film come to what was asked for.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <map>
#include <stdexcept>

#include "benches.h"
#include "screen_film.h"
#include "support/screen_pairs.h"

namespace {

constexpr double tints[] = {0.05, 0.10, 0.25, 0.50, 0.75, 0.90, 0.95};
constexpr int shapeTint = 2;  // of 25 %
constexpr const char *dot = "{dup mul exch dup mul add 1 exch sub}";

double roundDot(double x, double y)
{
    return 1 - (x * x + y * y);
}

struct Errors {
    std::vector<double> frequency, angle;  // %, degrees
    void add(const riders::ScreenReading &reading, const ScreenPair &pair)
    {
        const bool none = reading.kind == riders::ScreenKind::none;
        frequency.push_back(none ? 100 : 100 * std::abs(reading.frequency / pair.frequency - 1));
        angle.push_back(none ? 45 : std::abs(std::remainder(reading.angle - pair.angle, 90)));
    }
};

struct Accuracy {
    Errors fills, images;
    std::vector<double> ink, beat;  // parts of a hundred; by the screen's own wave
    std::vector<double> unlike;     // 1 less the correlation, of cells of 8 pixels and more
    std::map<double, ScreenPair> beats;
};

double worst(const std::vector<double> &values)
{
    return values.empty() ? 0 : *std::max_element(values.begin(), values.end());
}

double median(std::vector<double> values)
{
    if (values.empty())
        return 0;
    std::nth_element(values.begin(), values.begin() + long(values.size() / 2), values.end());
    return values[values.size() / 2];
}

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

riders::PageWindow inches(double dpi, double left, double top, double side)
{
    return {int(left * dpi), int(top * dpi), int(side * dpi), int(side * dpi)};
}

void readPages(const Workplace &place, double dpi, const ScreenPair &pair, Accuracy &accuracy)
{
    {
        const Film film(place / "page1.pbm", dpi);
        const riders::ScreenReading fill = riders::readScreen(film.page(), inches(dpi, 0, 0, 2));
        accuracy.fills.add(fill, pair);
        accuracy.images.add(riders::readScreen(film.page(), inches(dpi, 2, 0, 2)), pair);
        accuracy.beat.push_back(fill.beat.strength);
        accuracy.beats[fill.beat.strength] = pair;
    }
    const Film film(place / "page2.pbm", dpi);
    for (int i = 0; i < int(std::size(tints)); ++i) {
        const auto window = inches(dpi, i % 4, 1 - i / 4, 1);
        const riders::ScreenReading reading = riders::readScreen(film.page(), window);
        accuracy.ink.push_back(100 * std::abs(reading.ink - tints[i]));
        if (i == shapeTint && dpi / pair.frequency >= 8)
            accuracy.unlike.push_back(1 - riders::likenessTo(film.page(), reading, roundDot).correlation);
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
    const std::string file = place / "fragment";
    std::filesystem::remove(file);
    if (runProcess({riders, "make", "-o", file, "--frequency", text(pair.frequency), "--angle", text(pair.angle),
                    "--spot", "Round"})
            .status != 0)
        throw std::runtime_error("riders make failed");
    return file;
}

void printAccuracy(const char *method, const Accuracy &a, double aimFrequency, double aimAngle)
{
    std::printf("%-16s", method);
    for (const Errors *errors : {&a.fills, &a.images})
        std::printf(" %7.3f %7.3f %6.3f %6.3f", worst(errors->frequency), median(errors->frequency),
                    worst(errors->angle), median(errors->angle));
    std::printf(" %7.2f %7.2f %8.4f %6.2f", worst(a.ink), median(a.ink), 1 - worst(a.unlike), worst(a.beat));
    if (aimFrequency > 0) {
        const bool reached = std::max(worst(a.fills.frequency), worst(a.images.frequency)) <= aimFrequency &&
                             std::max(worst(a.fills.angle), worst(a.images.angle)) <= aimAngle &&
                             worst(a.ink) <= 0.7 && worst(a.unlike) <= 0.01 && worst(a.beat) <= 0.35;
        std::printf("  %s (aim %.1f %%, %.1f degrees, ink 0.7, shape 0.99, beat 0.35)",
                    reached ? "reached" : "missed", aimFrequency, aimAngle);
    }
    if (!a.beats.empty())
        std::printf("  beat at %g/%g", a.beats.rbegin()->second.frequency, a.beats.rbegin()->second.angle);
    std::printf("\n");
    std::fflush(stdout);
}

// Pairs on which ours is further off than theirs by more than the meter's own error.
int worseThan(const Errors &ours, const Errors &theirs)
{
    int count = 0;
    for (std::size_t i = 0; i < ours.frequency.size(); ++i)
        count += ours.frequency[i] > theirs.frequency[i] + 0.02 || ours.angle[i] > theirs.angle[i] + 0.01;
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
            const bool ours = method == 2;
            printAccuracy(methods[method].first, accuracy, ours ? (dpi > 2000 ? 0.5 : 0.4) : 0,
                          dpi > 2000 ? 0.4 : 0.3);
        }
        std::printf("worse than AccurateScreens: fills on %d pairs, images on %d (aim 0)\n",
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
