#include "commands/explained.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "io/json.h"
#include "io/plain_text.h"

namespace riders::commands {
namespace {

using explain::ReachedScreen;

constexpr const char *kRest = "Default";

const ReachedScreen *find(const std::vector<ReachedScreen> &reached, const std::string &plate)
{
    const auto found =
        std::find_if(reached.begin(), reached.end(), [&](const ReachedScreen &one) { return one.plate == plate; });
    return found == reached.end() ? nullptr : &*found;
}

bool isChosen(const std::vector<screens::PlateScreen> &plates, const std::string &plate)
{
    return std::any_of(plates.begin(), plates.end(),
                       [&](const screens::PlateScreen &chosen) { return chosen.plate == plate; });
}

// A device that adds light would have these.
bool isOfLight(const std::string &plate)
{
    constexpr std::array<const char *, 4> names = {"Red", "Green", "Blue", "Gray"};
    return std::find(names.begin(), names.end(), plate) != names.end();
}

bool isAskedAlike(const ReachedScreen &one, const ReachedScreen *other)
{
    return other != nullptr && one.askedFrequency == other->askedFrequency && one.askedAngle == other->askedAngle;
}

std::string decimals(const char *form, double value)
{
    std::array<char, 64> room{};
    snprintf(room.data(), room.size(), form, value);
    return room.data();
}

// Whether a plate has a frequency or an angle that neither it nor the rest chooses.
bool leavesToJob(const std::vector<screens::PlateScreen> &plates)
{
    screens::PlateScreen rest;
    for (const screens::PlateScreen &plate : plates)
        if (plate.plate == screens::kRestOfPlates)
            rest = plate;
    return std::any_of(plates.begin(), plates.end(), [&rest](const screens::PlateScreen &plate) {
        return (!plate.frequency && !rest.frequency) || (!plate.angle && !rest.angle);
    });
}

// Where the resolution allows no such frequency.
bool isFarOff(const ReachedScreen &screen)
{
    constexpr double off = 0.01;
    return screen.frequency < screen.askedFrequency * (1 - off);
}

std::string lineOf(const ReachedScreen &screen, bool alone)
{
    const std::string rest = alone ? "all plates" : "the rest";
    std::string line = "  " + (screen.plate == kRest ? rest : io::plainText(screen.plate));
    line += decimals(" %.3f lpi", screen.frequency) + decimals(" at %.3f°", screen.angle);
    line += decimals(", asked for %.7g", screen.askedFrequency) + decimals(" at %.7g°", screen.askedAngle);
    line += decimals("; a cell's side %.2f pixels", screen.cell);
    line += screen.supercellPixels == 0
                ? ", the interpreter's own screen"
                : ", " + std::to_string(screen.supercellCells) +
                      (screen.supercellCells == 1 ? " cell" : " cells") + " in a supercell of " +
                      std::to_string(screen.supercellPixels) + " pixels";
    line += "; " + std::to_string(screen.levels) + " grey levels";
    return line + (isFarOff(screen) ? "; not reached, since a cell has at least 4 pixels a side\n" : "\n");
}

}  // namespace

std::vector<ReachedScreen> inOrder(const std::vector<ReachedScreen> &reached,
                                   const std::vector<screens::PlateScreen> &plates)
{
    std::vector<ReachedScreen> ordered;
    for (const screens::PlateScreen &plate : plates)
        if (const ReachedScreen *const found = find(reached, plate.plate))
            ordered.push_back(*found);
    const ReachedScreen *const rest = find(reached, kRest);
    if (rest == nullptr || !isChosen(plates, screens::kRestOfPlates))
        return ordered;
    for (const ReachedScreen &one : reached)
        if (&one != rest && !isChosen(plates, one.plate) && !isOfLight(one.plate) && !isAskedAlike(one, rest))
            ordered.push_back(one);
    ordered.push_back(*rest);
    return ordered;
}

std::string explainedInWords(const std::vector<ReachedScreen> &reached,
                             const std::vector<screens::PlateScreen> &plates, int dpi)
{
    if (reached.empty())
        return "No screen is chosen.\n";
    std::string lines = "At " + std::to_string(dpi) + " dpi, on a device with several inks:\n";
    for (const ReachedScreen &screen : reached)
        lines += lineOf(screen, reached.size() == 1);
    if (leavesToJob(plates))
        lines +=
            "Frequencies and angles that were not chosen are Ghostscript's own here, and the job's in a job.\n";
    return lines;
}

std::string explainedInJson(const std::vector<ReachedScreen> &reached, int dpi)
{
    std::vector<std::string> values;
    values.reserve(reached.size());
    for (const ReachedScreen &screen : reached)
        values.push_back(io::jsonObject({{"plate", io::jsonText(screen.plate == kRest ? "*" : screen.plate)},
                                         {"askedFrequency", io::jsonNumber(screen.askedFrequency)},
                                         {"askedAngle", io::jsonNumber(screen.askedAngle)},
                                         {"frequency", io::jsonNumber(screen.frequency)},
                                         {"angle", io::jsonNumber(screen.angle)},
                                         {"cell", io::jsonNumber(screen.cell)},
                                         {"supercellPixels", std::to_string(screen.supercellPixels)},
                                         {"supercellCells", std::to_string(screen.supercellCells)},
                                         {"greyLevels", std::to_string(screen.levels)}}));
    return io::jsonObject({{"dpi", std::to_string(dpi)}, {"plates", io::jsonArray(values)}});
}

}  // namespace riders::commands
