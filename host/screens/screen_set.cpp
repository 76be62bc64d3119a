#include "screens/screen_set.h"

#include <algorithm>
#include <cmath>

#include "io/refusal.h"
#include "screens/number_text.h"
#include "screens/screen_limits.h"

namespace riders::screens {
namespace {

// What is left of a product's error would be written out to sixteen digits.
double rounded(double frequency)
{
    constexpr double parts = 1e8;
    return std::round(frequency * parts) / parts;
}

std::optional<double> frequencyOf(const SetPlate &plate, const ScreenSet &set, std::optional<double> wanted)
{
    if (!plate.screen.frequency) {
        const std::optional<double> base = wanted ? wanted : set.frequency;
        return base ? std::optional(rounded(*base * plate.factor.value_or(1))) : std::nullopt;
    }
    if (!wanted)
        return plate.screen.frequency;
    if (!set.frequency)
        throw io::Refusal("the set \"" + set.name +
                          "\" cannot be scaled: its plates have frequencies of their own, "
                          "and the set has none to compare them with; leave the frequency out");
    return rounded(*plate.screen.frequency * *wanted / *set.frequency);
}

}  // namespace

std::vector<PlateScreen> screensOf(const ScreenSet &set, std::optional<double> frequency)
{
    std::vector<PlateScreen> screens;
    for (const SetPlate &plate : set.plates) {
        PlateScreen screen = plate.screen;
        screen.frequency = frequencyOf(plate, set, frequency);
        if (screen.shape.empty())
            screen.shape = set.shape;
        if (screen.frequency && !wrongFrequency(*screen.frequency).empty())
            throw io::Refusal("the set \"" + set.name + "\" gives " +
                              (screen.plate == kRestOfPlates ? "the rest" : screen.plate) + " " +
                              numberText(*screen.frequency) + " lines per inch, not " +
                              wrongFrequency(*screen.frequency));
        screens.push_back(std::move(screen));
    }
    return screens;
}

void setPlate(std::vector<PlateScreen> &plates, const PlateScreen &given)
{
    const auto found = std::find_if(plates.begin(), plates.end(),
                                    [&](const PlateScreen &plate) { return plate.plate == given.plate; });
    if (found == plates.end()) {
        plates.push_back(given);
        return;
    }
    if (given.frequency)
        found->frequency = given.frequency;
    if (given.angle)
        found->angle = given.angle;
    if (!given.shape.empty())
        found->shape = given.shape;
}

}  // namespace riders::screens
