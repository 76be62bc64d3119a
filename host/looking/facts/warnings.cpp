#include "looking/facts/warnings.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "io/decimal.h"
#include "looking/facts/on_mesh.h"
#include "looking/facts/plate_patterns.h"

namespace riders::looking {
using io::decimal;

namespace {

constexpr double kFrequencyOff = 0.01;  // of the frequency asked for
constexpr double kAngleOff = 0.5;       // degrees
constexpr int kFewLevels = 24;
constexpr double kLightest = 0.03, kDarkest = 0.97;

std::string percent(double share)
{
    return decimal(share * 100, 1) + " %";
}

void warnOfTints(const PlateFacts &plate, std::vector<std::string> &warnings)
{
    if (plate.tints.tint && plate.tints.least < kLightest)
        warnings.push_back(plate.name + ": a tint of " + percent(plate.tints.least) +
                           ", below 3 %: its dots may not hold.");
    if (plate.tints.tint && plate.tints.most > kDarkest)
        warnings.push_back(plate.name + ": a tint of " + percent(plate.tints.most) +
                           ", above 97 %: its holes may fill in.");
}

// Ghostscript by itself takes the paper's share to the power of 0.8 at these resolutions; a proof does not.
void warnOfLightening(const PageFacts &page, std::vector<std::string> &warnings)
{
    constexpr double kFrom = 150, kBelow = 800, kPower = 0.8, kMostLightened = 0.672;
    if (!page.byInterpreter || page.dpi < kFrom || page.dpi >= kBelow)
        return;
    const auto lightened = [](double tint) { return 1 - std::pow(1 - tint, kPower); };
    double worst = 0;
    for (const PlateFacts &plate : page.plates) {
        const double tint = plate.tints.tint ? std::clamp(kMostLightened, plate.tints.least, plate.tints.most) : 0;
        if (tint - lightened(tint) > worst - lightened(worst))
            worst = tint;
    }
    if (worst - lightened(worst) >= 0.005)
        warnings.push_back("Printed by Ghostscript at " + decimal(page.dpi, 0) +
                           " dpi, tints become lighter: " + percent(worst) + " becomes " +
                           percent(lightened(worst)) + ". On these films they are as the job has them.");
}

// What a cell of the plate's screen can show, where the program has not made it; 0 where that is not known.
int greyLevels(const PlateFacts &plate, double dpi)
{
    return plate.levels == 0 && plate.measured.found && dpi > 0 ? levelsOfCell(plate.measured.frequency, dpi) : 0;
}

void warnOfFewLevels(const PageFacts &page, std::vector<std::string> &warnings)
{
    std::vector<std::size_t> few;
    double finest = 0;
    for (std::size_t i = 0; i < page.plates.size(); ++i)
        if (const int levels = greyLevels(page.plates[i], page.dpi); levels > 0 && levels < kFewLevels) {
            few.push_back(i);
            finest = std::max(finest, page.plates[i].measured.frequency);
        }
    if (few.empty())
        return;
    // What makes cells of eight by eight pixels.
    const double enough = std::ceil(finest * 8 / 100) * 100;
    warnings.push_back(namesOf(few, page.plates) + ": " + decimal(page.dpi, 0) + " dpi leaves cells of " +
                       std::to_string(levelsOfCell(finest, page.dpi)) + " grey levels at " + decimal(finest, 1) +
                       " lines per inch: smooth tints will show steps. At " + decimal(enough, 0) +
                       " dpi there are more than 64.");
}

// Whether all plates share an angle, which is then warned of.
bool warnOfSharedAngle(const PageFacts &page, std::vector<std::string> &warnings)
{
    std::vector<double> angles;
    for (const PlateFacts &plate : page.plates)
        if (const std::optional<screens::Grid> screen = screenOf(plate))
            angles.push_back(screen->angle);
    const bool shared = angles.size() > 1 && std::all_of(angles.begin(), angles.end(), [&angles](double angle) {
                            return anglesApart(angle, angles[0]) <= kAngleOff;
                        });
    if (shared)
        warnings.push_back("All plates share an angle, " + decimal(angles[0], 1) +
                           "°: the slightest misregister will show as a shift of colour.");
    return shared;
}

// Patterns with a light ink are no reason for a warning.
void warnOfPatterns(const PageFacts &page, bool allShare, std::vector<std::string> &warnings)
{
    for (const PlatePattern &pattern : page.patterns)
        if (pattern.light.empty() && !(pattern.shared && allShare))
            warnings.push_back(sentenceFor(pattern, page.plates));
}

}  // namespace

int levelsOfCell(double frequency, double dpi)
{
    const double side = dpi / frequency;
    return static_cast<int>(side * side) + 1;
}

double anglesApart(double one, double other)
{
    return std::abs(std::remainder(one - other, 90));
}

std::vector<std::string> whatIsOff(const PlateFacts &plate)
{
    const plates::AskedFor &asked = plate.asked;
    const plates::MeasuredScreen &measured = plate.measured;
    if (plate.made || !measured.found || !asked.binding)
        return plate.off;
    std::vector<std::string> off;
    if (asked.frequency && std::abs(measured.frequency / *asked.frequency - 1) > kFrequencyOff)
        off.push_back(decimal(measured.frequency, 2) + " lines per inch on the film, " +
                      decimal(*asked.frequency, 2) + " asked for");
    if (asked.angle && anglesApart(measured.angle, *asked.angle) > kAngleOff)
        off.push_back(decimal(measured.angle, 2) + "° on the film, " + decimal(*asked.angle, 2) + "° asked for");
    if (!asked.shape.empty() && !measured.shape.empty() && measured.shape != asked.shape)
        off.push_back("dots like " + measured.shape + " on the film, " + asked.shape + " asked for");
    return off;
}

std::vector<std::string> warningsFor(const PageFacts &page)
{
    std::vector<std::string> warnings;
    if (!page.leftOut.empty())
        warnings.push_back("Its dots are not shown: " + page.leftOut + ".");
    if (!page.refused.empty())
        warnings.push_back("Of the riders file: " + page.refused + ".");
    for (const PlateFacts &plate : page.plates) {
        for (const std::string &off : whatIsOff(plate))
            warnings.push_back(plate.name + ": " + off + ".");
        warnOfTints(plate, warnings);
    }
    warnOfFewLevels(page, warnings);
    warnOfLightening(page, warnings);
    const bool allShare = warnOfSharedAngle(page, warnings);
    warnOfPatterns(page, allShare, warnings);
    for (std::string &warning : warningsOnMesh(page))
        warnings.push_back(std::move(warning));
    return warnings;
}

}  // namespace riders::looking
