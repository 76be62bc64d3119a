#include "film/screen_choice.h"

#include <algorithm>

#include "film/riders_shapes.h"
#include "io/bytes.h"

namespace riders::film {
namespace {

using screens::PlateScreen;

constexpr const char *kUsualShape = "Round";

// As offset printers have them; one plate alone, and spot inks, are at 45 degrees.
double usualAngle(const std::string &plate)
{
    if (plate == "Cyan")
        return 15;
    if (plate == "Magenta")
        return 75;
    return plate == "Yellow" ? 0 : 45;
}

const PlateScreen *entryFor(const std::vector<PlateScreen> &screens, const std::string &plate)
{
    const auto found = std::find_if(screens.begin(), screens.end(),
                                    [&](const PlateScreen &screen) { return screen.plate == plate; });
    return found == screens.end() ? nullptr : &*found;
}

}  // namespace

ScreenChoice::ScreenChoice(const ScreenSources &sources) : sources_(sources)
{
    if (!sources_.riders.empty()) {
        riders_ = plates::askedByRiders(sources_.riders);
        ridersShapes_ = shapesInRiders(io::contentsOf(sources_.riders));
    }
    for (const PlateScreen &screen : sources_.chosen)
        if (!screen.shape.empty())
            shapes_.emplace(screen.shape, dotShapeNamed(screen.shape));
}

PlateDots ScreenChoice::of(std::size_t page, const std::string &plate) const
{
    const plates::AskedScreens &screens = screensAtEndOf(page);
    const auto whole = screens.find("Default");
    // A page that is one plate of a job separated before has that plate's screen.
    const std::string meant =
        whole == screens.end() || whole->second.pagePlate.empty() ? plate : whole->second.pagePlate;
    PlateDots dots{kUsualFrequency, usualAngle(meant), {kUsualShape, {}}, "nobody"};
    takeAsked(meant, screens, dots);
    takeChosen(meant, dots);
    return dots;
}

// For PDF the interpreter reports the pages asked for only, otherwise all of the job's.
const plates::AskedScreens &ScreenChoice::screensAtEndOf(std::size_t page) const
{
    static const plates::AskedScreens none;
    const plates::Survey &survey = sources_.survey;
    const std::size_t index =
        sources_.kind == plates::JobKind::pdf ? page : static_cast<std::size_t>(survey.pages.at(page).number) - 1;
    return index < survey.report.pages.size() ? survey.report.pages[index] : none;
}

void ScreenChoice::takeAsked(const std::string &plate, const plates::AskedScreens &screens, PlateDots &dots) const
{
    const plates::AskedFor asked = plates::askedFor(plate, riders_, screens, sources_.survey.report.atStart);
    if (!asked.binding)
        return;
    dots.frequency = asked.frequency.value_or(dots.frequency);
    dots.angle = asked.angle.value_or(dots.angle);
    dots.by = asked.by;
    if (!asked.shape.empty()) {
        dots.shape = {asked.shape, {}};
        return;
    }
    auto body = ridersShapes_.find(plate);
    if (body == ridersShapes_.end())
        body = ridersShapes_.find("");
    if (body == ridersShapes_.end())
        dots.shapeUnknown = true;
    else
        dots.shape = {"the riders file's shape", body->second};
}

void ScreenChoice::takeChosen(const std::string &plate, PlateDots &dots) const
{
    for (const std::string &name : {std::string(screens::kRestOfPlates), plate}) {
        const PlateScreen *const chosen = entryFor(sources_.chosen, name);
        if (chosen == nullptr)
            continue;
        dots.by = "you";
        dots.frequency = chosen->frequency.value_or(dots.frequency);
        dots.angle = chosen->angle.value_or(dots.angle);
        if (chosen->shape.empty())
            continue;
        dots.shape = shapes_.at(chosen->shape);
        dots.shapeUnknown = false;
    }
}

}  // namespace riders::film
