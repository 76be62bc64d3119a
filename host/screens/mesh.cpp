#include "screens/mesh.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "io/decimal.h"
#include "screens/number_text.h"

namespace riders::screens {
using io::decimal;

namespace {

constexpr double kLeastShown = 2, kMostShown = 6;  // ratios
constexpr double kTooNear = 7.5, kTurn = 0.5;      // degrees
constexpr double kRounding = 1e-9;
// How far a screen on a film may be from what was asked for: that alone is nothing to doubt.
constexpr double kFrequencyOff = 0.003, kDegreesOff = 0.3;

constexpr double kMeshes[] = {60,  76,  86,  110, 125, 140, 156, 169, 180, 195,
                              225, 230, 255, 280, 305, 330, 355, 380, 420, 460};
constexpr double kFrequencies[] = {25, 30, 35, 40, 45, 50, 55, 60, 65, 75, 85, 100, 120, 133, 150};

bool isShown(double ratio)
{
    return ratio > kLeastShown - kRounding && ratio < kMostShown + kRounding;
}

// Threads a line, at the best.
double ratioOf(const OnMesh &mesh)
{
    return mesh.ratio * (1 + kFrequencyOff);
}

bool isNearThreads(const OnMesh &mesh)
{
    return mesh.nearestThread < kTooNear - kDegreesOff;
}

bool isDoubtful(const OnMesh &mesh)
{
    return isNearThreads(mesh) || (mesh.most && mesh.most->canBeSeen());
}

// The nearest angle at which there is nothing to doubt.
std::optional<double> betterAngle(const Grid &screen, double threadsPerInch)
{
    const double start = std::round(screen.angle / kTurn) * kTurn;
    for (double apart = 0; apart <= 45; apart += kTurn)
        for (const double angle : {start + apart, start - apart}) {
            Grid turned = screen;
            turned.angle = angle - 90 * std::floor(angle / 90);
            if (!isDoubtful(onMesh(turned, threadsPerInch)))
                return turned.angle;
        }
    return {};
}

}  // namespace

std::optional<double> perInchFromText(std::string_view text)
{
    double number = 0;
    const std::size_t unitAt = std::min(text.find('/'), text.size());
    const std::string spelt = withPeriod(std::string(text.substr(0, unitAt))) + std::string(text.substr(unitAt));
    text = spelt;
    const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const std::string_view unit(rest, static_cast<std::size_t>(text.data() + text.size() - rest));
    if (error != std::errc() || !std::isfinite(number) || number <= 0)
        return {};
    if (unit.empty() || unit == "/in")
        return number;
    if (unit == "/cm")
        return number * kMillimetresPerInch / 10;
    return {};
}

Grid threadsOf(double perInch)
{
    return {perInch, 0, GridKind::threads};
}

OnMesh onMesh(const Grid &screen, double threadsPerInch)
{
    const std::vector<Grid> both = {screen, threadsOf(threadsPerInch)};
    return {threadsPerInch / screen.frequency, patternBetween(both), coarsestBetween(both),
            degreesApart(GridKind::threads, screen.angle, 0)};
}

bool hasTooFewThreads(const OnMesh &mesh)
{
    return ratioOf(mesh) < kLeastRatio;
}

std::string adviceFor(const OnMesh &mesh)
{
    const double ratio = ratioOf(mesh);
    if (hasTooFewThreads(mesh))
        return "too few threads; " + decimal(kLeastRatio, 2) + " a line at the least";
    if (ratio < kUsualRatio)
        return "few threads; the usual advice is " + decimal(kUsualRatio, 2) + " a line";
    return ratio < kFineRatio ? "as usually advised" : "enough for fine work";
}

std::vector<std::string> doubtsOf(const Grid &screen, double threadsPerInch)
{
    const OnMesh mesh = onMesh(screen, threadsPerInch);
    if (!isDoubtful(mesh))
        return {};
    std::vector<std::string> doubts;
    if (isNearThreads(mesh))
        doubts.push_back("the rows lie " + decimal(mesh.nearestThread, 1) + "° from the threads");
    if (mesh.most && mesh.most->canBeSeen())
        doubts.push_back("a pattern of " + decimal(mesh.most->millimetres(), 1) + " mm may be seen");
    const std::optional<double> better = betterAngle(screen, threadsPerInch);
    doubts.push_back(better ? "better at " + decimal(*better, 1) + "°"
                            : "no angle is better: choose another mesh or frequency");
    return doubts;
}

std::vector<double> meshesFor(double frequency)
{
    std::vector<double> meshes;
    std::copy_if(std::begin(kMeshes), std::end(kMeshes), std::back_inserter(meshes),
                 [frequency](double threads) { return isShown(threads / frequency); });
    return meshes;
}

std::vector<double> frequenciesFor(double threadsPerInch)
{
    std::vector<double> frequencies;
    std::copy_if(std::begin(kFrequencies), std::end(kFrequencies), std::back_inserter(frequencies),
                 [threadsPerInch](double frequency) { return isShown(threadsPerInch / frequency); });
    return frequencies;
}

}  // namespace riders::screens
