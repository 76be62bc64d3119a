#include "looking/facts/plate_patterns.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>

#include "io/decimal.h"
#include "looking/pictures/linear_light.h"
#include "screens/moire.h"
#include "screens/moire_remedy.h"

namespace riders::looking {

using io::decimal;
using screens::NamedScreen;
using screens::Pattern;

namespace {

// Measured over this many inches, a screen is as exact as a Grid is taken to be; over less, it is less exact.
constexpr double kExactOver = 0.75;
constexpr double kAboutReached = 0.1, kDegreesAboutReached = 5;  // of the frequency, and of the angle

bool isLight(const PlateFacts &plate)
{
    return 1 - luminance(lightOf(plate.ink)) < kLightInk;
}

screens::Grid askedGrid(const PlateFacts &plate, screens::Grid grid)
{
    const plates::AskedFor &asked = plate.asked;
    if (asked.frequency && std::abs(*asked.frequency / grid.frequency - 1) < kAboutReached)
        grid.frequency = *asked.frequency;
    if (asked.angle && screens::degreesApart(grid.kind, *asked.angle, grid.angle) < kDegreesAboutReached)
        grid.angle = *asked.angle;
    return grid;
}

// The plates with a screen, and where they are among all.
struct Screened {
    explicit Screened(const std::vector<PlateFacts> &plates)
    {
        for (std::size_t i = 0; i < plates.size(); ++i)
            if (const std::optional<screens::Grid> grid = screenOf(plates[i])) {
                screens.push_back({plates[i].name, *grid, isLight(plates[i])});
                asked.push_back(screens.back());
                asked.back().grid = askedGrid(plates[i], *grid);
                places.push_back(i);
            }
    }

    PlatePattern started(const std::vector<std::size_t> &which) const
    {
        PlatePattern pattern;
        double logarithms = 0;
        for (const std::size_t i : which) {
            pattern.plates.push_back(places[i]);
            logarithms += std::log(screens[i].grid.frequency) / static_cast<double>(which.size());
            if (screens[i].light)
                pattern.light = screens[i].name;
        }
        pattern.cell = screens::kMillimetresPerInch / std::exp(logarithms);
        pattern.rosette = pattern.cell * screens::kRosettePeriod;
        return pattern;
    }

    // As asked for, as far as that is known and was reached about: what can be asked for otherwise.
    std::vector<NamedScreen> screens, asked;
    std::vector<std::size_t> places;
};

bool concerns(const screens::Change &change, const Pattern &pattern)
{
    return std::find(pattern.grids.begin(), pattern.grids.end(), change.screen) != pattern.grids.end();
}

std::string changeText(const screens::Change &change, const std::string &name)
{
    if (!change.frequency)
        return "turn " + name + " to " + decimal(*change.angle, 1) + "°";
    return "make " + name + " " + decimal(*change.frequency, 2) + " lines per inch" +
           (change.angle ? " at " + decimal(*change.angle, 2) + "°" : "");
}

std::string changesFor(const Pattern &pattern, const screens::Remedy &remedy, const std::vector<NamedScreen> &all)
{
    std::vector<screens::Grid> grids;
    for (const std::size_t i : pattern.grids)
        grids.push_back(all[i].grid);
    const std::optional<Pattern> asked = screens::patternBetween(grids);
    if (!asked || !asked->canBeSeen())
        return "the screens that were asked for would not make it";
    std::string text;
    for (const screens::Change &change : remedy.changes)
        if (concerns(change, pattern))
            text += (text.empty() ? "" : " and ") + changeText(change, all[change.screen].name);
    return text;
}

bool isPartOf(const PlatePattern &pair, const PlatePattern &three)
{
    return three.plates.size() == 3 && pair.plates.size() == 2 &&
           std::includes(three.plates.begin(), three.plates.end(), pair.plates.begin(), pair.plates.end());
}

void addShared(const Screened &screened, std::vector<PlatePattern> &patterns)
{
    for (std::size_t i = 0; i < screened.screens.size(); ++i)
        for (std::size_t j = i + 1; j < screened.screens.size(); ++j)
            if (screens::shareGrid(screened.screens[i].grid, screened.screens[j].grid)) {
                patterns.push_back(screened.started({i, j}));
                patterns.back().shared = true;
            }
}

}  // namespace

screens::Grid gridOf(const plates::MeasuredScreen &measured)
{
    screens::Grid grid{measured.frequency, measured.angle,
                       measured.lines ? screens::GridKind::lines : screens::GridKind::dots};
    const double side = std::min(measured.where.width, measured.where.height);
    if (side > 0 && side < kExactOver)
        grid.exactness *= kExactOver / side;
    return grid;
}

std::optional<screens::Grid> screenOf(const PlateFacts &plate)
{
    if (plate.made || !plate.measured.found)
        return plate.made;
    return gridOf(plate.measured);
}

std::vector<PlatePattern> patternsBetween(const std::vector<PlateFacts> &plates)
{
    const Screened screened(plates);
    const screens::Remedy remedy = screens::remedyFor(screened.asked);
    std::vector<PlatePattern> all, kept;
    for (const Pattern &pattern : patternsOf(screened.screens))
        if (pattern.canBeSeen()) {
            all.push_back(screened.started(pattern.grids));
            all.back().millimetres = pattern.millimetres();
            all.back().change = changesFor(pattern, remedy, screened.asked);
        }
    addShared(screened, all);
    std::copy_if(all.begin(), all.end(), std::back_inserter(kept), [&all](const PlatePattern &pattern) {
        return std::none_of(all.begin(), all.end(),
                            [&pattern](const PlatePattern &pair) { return isPartOf(pair, pattern); });
    });
    return kept;
}

std::string namesOf(const std::vector<std::size_t> &places, const std::vector<PlateFacts> &plates)
{
    std::string names;
    for (std::size_t i = 0; i < places.size(); ++i) {
        const bool last = i + 1 == places.size();
        names += (i == 0 ? "" : last ? " and " : ", ") + plates[places[i]].name;
    }
    return names;
}

std::string sentenceFor(const PlatePattern &pattern, const std::vector<PlateFacts> &plates)
{
    const std::string names = namesOf(pattern.plates, plates);
    if (pattern.shared) {
        const screens::Grid screen = *screenOf(plates[pattern.plates[0]]);
        return names + " have one screen, " + decimal(screen.frequency, 1) + " lines per inch at " +
               decimal(screen.angle, 1) + "°: the slightest misregister will show as a shift of colour.";
    }
    const std::string made = names + " make a pattern of " + decimal(pattern.millimetres, 2) + " mm";
    if (!pattern.light.empty())
        return made + "; " + pattern.light + " is light, so it will hardly show.";
    return made + ", where the rosette’s own is " + decimal(pattern.rosette, 2) +
           " mm: " + (pattern.change.empty() ? "no usual change of one plate helps" : pattern.change) + ".";
}

}  // namespace riders::looking
