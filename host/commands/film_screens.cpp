#include "commands/film_screens.h"

#include "commands/chosen_screens.h"
#include "screens/plate_spelling.h"
#include "screens/screen_limits.h"
#include "screens/screen_set.h"

namespace riders::commands {
namespace {

using screens::PlateScreen;

std::optional<double> numberOf(const std::optional<std::string> &text, const std::string &option,
                               std::string (*wrong)(double))
{
    return text ? std::optional(numberGiven(*text, option, wrong)) : std::nullopt;
}

}  // namespace

std::vector<PlateScreen> chooseFilmScreens(const FilmScreenWords &words)
{
    std::vector<PlateScreen> chosen;
    if (words.set)
        chosen = screensOfSet(*words.set, {words.frequency, words.angle, words.spot});
    else if (words.frequency || words.angle || words.spot)
        chosen.push_back({screens::kRestOfPlates,
                          numberOf(words.frequency, "--frequency", screens::wrongFrequency),
                          numberOf(words.angle, "--angle", screens::wrongAngle), words.spot.value_or("")});
    for (const std::string &plate : words.plates)
        setPlate(chosen, screens::plateFromText(plate));
    return chosen;
}

}  // namespace riders::commands
