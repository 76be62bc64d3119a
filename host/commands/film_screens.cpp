#include "commands/film_screens.h"

#include "commands/chosen_screens.h"
#include "film/request.h"
#include "film/resolution_text.h"
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

std::string isFilmResolution(const std::string &text)
{
    return film::resolutionFromText(text)
               ? ""
               : "expected dots per inch from " + std::to_string(film::kLeastFilmDpi) + " to " +
                     std::to_string(film::kMostFilmDpi) + ", as in 1200 or 1440x720";
}

std::vector<CLI::Option *> addScreenOptions(CLI::App &command, FilmScreenWords &words)
{
    const CLI::Validator notEmpty(namesSomething, "");
    return {
        command
            .add_option("--screens", words.set,
                        "A set of screens (riders screens lists them), or its file; --frequency then scales it")
            ->check(notEmpty)
            ->type_name("NAME|FILE"),
        command
            .add_option("--plate", words.plates,
                        "The screen of one plate, as in Cyan:133@15,Round; may be given again")
            ->type_name("NAME:LPI@ANGLE,SHAPE")
            ->allow_extra_args(false),
        command
            .add_option(
                "--frequency", words.frequency,
                "Lines per inch, of all plates. What is not chosen is as in the riders file or the job; where "
                "these choose nothing, 60 lines per inch at 45 degrees (Cyan 15, Magenta 75, Yellow 0), Round")
            ->type_name("LPI"),
        command.add_option("--angle", words.angle, "Degrees, of all plates")->type_name("DEG"),
        command
            .add_option("--spot", words.spot,
                        "Dot shape by name (riders shapes lists them), or a spot function file")
            ->check(notEmpty)
            ->type_name("NAME|FILE")};
}

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
        setPlate(chosen, plateGiven(plate));
    return chosen;
}

}  // namespace riders::commands
