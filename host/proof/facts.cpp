#include "proof/facts.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "io/bytes.h"
#include "io/refusal.h"
#include "proof/plate_files.h"

namespace riders::proof {
namespace {

constexpr double kFrequencyOff = 0.01;  // of the frequency asked for
constexpr double kAngleOff = 0.5;       // degrees
constexpr double kLightest = 0.03, kDarkest = 0.97;
constexpr size_t kLongestRiders = 1 << 20;

// The number of the first "/name number" there is; what an annotation says comes later.
std::optional<double> definedNumber(const std::string &text, const std::string &name)
{
    for (size_t at = text.find(name); at != std::string::npos; at = text.find(name, at + 1)) {
        const char *start = text.c_str() + at + name.size();
        char *end = nullptr;
        const double number = std::strtod(start, &end);
        if (end != start && std::isfinite(number))
            return number;
    }
    return {};
}

std::string percent(double share)
{
    return decimal(share * 100, 1) + " %";
}

bool isSame(const AskedScreens &one, const AskedScreens &other)
{
    return std::equal(one.begin(), one.end(), other.begin(), other.end(), [](const auto &a, const auto &b) {
        return a.first == b.first && a.second.frequency == b.second.frequency &&
               a.second.angle == b.second.angle && a.second.shape == b.second.shape;
    });
}

void warnOfScreen(const PlateFacts &plate, std::vector<std::string> &warnings)
{
    const AskedFor &asked = plate.asked;
    const MeasuredScreen &measured = plate.measured;
    if (!measured.found || !asked.binding)
        return;
    if (asked.frequency && std::abs(measured.frequency / *asked.frequency - 1) > kFrequencyOff)
        warnings.push_back(plate.name + ": " + decimal(measured.frequency, 2) + " lines an inch on the film, " +
                           decimal(*asked.frequency, 2) + " asked for.");
    if (asked.angle && anglesApart(measured.angle, *asked.angle) > kAngleOff)
        warnings.push_back(plate.name + ": " + decimal(measured.angle, 2) + "° on the film, " +
                           decimal(*asked.angle, 2) + "° asked for.");
    if (!asked.shape.empty() && !measured.shape.empty() && measured.shape != asked.shape)
        warnings.push_back(plate.name + ": dots like " + measured.shape + " on the film, " + asked.shape +
                           " asked for.");
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

void warnOfSharedAngle(const PageFacts &page, std::vector<std::string> &warnings)
{
    std::vector<double> angles;
    for (const PlateFacts &plate : page.plates)
        if (plate.measured.found)
            angles.push_back(plate.measured.angle);
    const bool shared = std::all_of(angles.begin(), angles.end(), [&angles](double angle) {
        return anglesApart(angle, angles[0]) <= kAngleOff;
    });
    if (angles.size() > 1 && shared)
        warnings.push_back("All plates share an angle, " + decimal(angles[0], 1) +
                           "°: the slightest misregister will show as a shift of colour.");
}

}  // namespace

std::string decimal(double value, int digits)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", digits, value);
    std::string number = text;
    if (number.find('.') != std::string::npos) {
        number.erase(number.find_last_not_of('0') + 1);
        if (number.ends_with('.'))
            number.pop_back();
    }
    return number == "-0" ? "0" : number;
}

AskedFor askedByRiders(const std::filesystem::path &riders)
{
    const io::OpenFile in = io::openInput(riders);
    std::string text(kLongestRiders, '\0');
    text.resize(io::readFully(in, text.data(), text.size()));
    AskedFor asked{definedNumber(text, "/riderFrequency "), definedNumber(text, "/riderAngle "), "the riders file",
                   true, text.find("\n/riderFont (") != text.npos};
    return asked;
}

AskedFor askedFor(const std::string &plate, const AskedFor &riders, const AskedScreens &page,
                  const AskedScreens &interpreter)
{
    AskedFor asked;
    auto found = page.find(plate);
    if (found == page.end())
        found = page.find("Default");
    if (found == page.end() && !isProcessPlate(plate))
        found = page.find("Black");  // setcolorscreen names no spot inks: they get the last of its screens
    asked.by = "nobody";
    if (found != page.end()) {
        if (found->second.frequency > 0) {
            asked.frequency = found->second.frequency;
            asked.angle = found->second.angle;
        }
        asked.shape = found->second.shape;
        asked.binding = !isSame(page, interpreter);
        asked.by = asked.binding ? "the job" : "nobody";
    }
    if (riders.frequency || riders.angle) {
        asked.frequency = riders.frequency ? riders.frequency : asked.frequency;
        asked.angle = riders.angle ? riders.angle : asked.angle;
        asked.binding = true;
        asked.by = riders.by;
    }
    return asked;
}

double anglesApart(double one, double other)
{
    return std::abs(std::remainder(one - other, 90));
}

std::vector<std::string> warningsFor(const PageFacts &page)
{
    std::vector<std::string> warnings;
    for (const PlateFacts &plate : page.plates) {
        warnOfScreen(plate, warnings);
        warnOfTints(plate, warnings);
    }
    warnOfSharedAngle(page, warnings);
    return warnings;
}

}  // namespace riders::proof
