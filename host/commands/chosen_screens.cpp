#include "commands/chosen_screens.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "commands/known_sets.h"
#include "io/refusal.h"
#include "screens/number_text.h"
#include "screens/plate_spelling.h"
#include "screens/screen_limits.h"
#include "screens/screen_set.h"
#include "screens/set_file.h"
#include "screens/shapes.h"

namespace riders::commands {
namespace {

using screens::PlateScreen;

// In the form that the dialogs take: 0 to 360.
std::string dialogAngle(double angle)
{
    const double turned = std::fmod(angle, screens::kMostAngle);
    return screens::numberText(turned < 0 ? turned + screens::kMostAngle : turned);
}

void askDialogs(make::MakeRequest &request, const PlateScreen &rest)
{
    if (rest.frequency)
        request.frequency = screens::numberText(*rest.frequency);
    if (rest.angle)
        request.angle = dialogAngle(*rest.angle);
    if (!rest.shape.empty())
        request.spot = rest.shape;
}

make::PlatePiece pieceOf(const PlateScreen &plate)
{
    make::PlatePiece piece{plate.plate, plate.frequency, plate.angle};
    if (plate.shape.empty())
        return piece;
    const std::optional<screens::Shape> shape = screens::shapeNamed(plate.shape);
    if (!shape)
        throw io::Refusal("there is no dot shape and no file \"" + plate.shape + "\" for " + plate.plate +
                          "; riders shapes lists the shapes" + screens::shapeMeant(plate.shape));
    piece.spotBody = shape->body;
    if (!screens::installedShape(plate.shape))
        piece.spotFile = shape->file.filename();
    return piece;
}

// What was asked of the dialogs, as far as it is understood: they refuse the rest.
PlateScreen askedOfDialogs(const make::MakeRequest &request)
{
    PlateScreen rest{screens::kRestOfPlates, {}, {}, request.spot.value_or("")};
    if (request.frequency)
        rest.frequency = screens::numberFromText(*request.frequency);
    if (request.angle)
        rest.angle = screens::numberFromText(*request.angle);
    return rest;
}

}  // namespace

double numberGiven(const std::string &text, const std::string &option, std::string (*wrong)(double))
{
    const double value = screens::numberFromText(text).value_or(std::numeric_limits<double>::quiet_NaN());
    if (const std::string expected = wrong(value); !expected.empty())
        throw io::Refusal("expected " + expected + " with " + option + ", not \"" + text + "\"");
    return value;
}

screens::PlateScreen plateGiven(const std::string &text)
{
    try {
        return screens::plateFromText(text);
    } catch (const io::Refusal &refusal) {
        throw io::Refusal("--plate " + refusal.message);
    }
}

std::string namesSomething(const std::string &text)
{
    return text.empty() ? "expected a name or a file" : "";
}

std::vector<PlateScreen> screensOfSet(const std::string &name, const ScreenOfAll &all)
{
    if (all.angle)
        throw io::Refusal("--angle would give all plates of the set one angle; name the plate, as in --plate "
                          "Cyan:@" +
                          *all.angle);
    const screens::ScreenSet set = screens::setFromFile(screens::setFileNamed(name, setFolders()));
    std::optional<double> scale;
    if (all.frequency)
        scale = numberGiven(*all.frequency, "--frequency", screens::wrongFrequency);
    std::vector<PlateScreen> plates = screensOf(set, scale);
    for (PlateScreen &plate : plates)
        plate.shape = all.spot.value_or(plate.shape);
    return plates;
}

std::vector<PlateScreen> chooseScreens(const ScreenWords &words, make::MakeRequest &request)
{
    std::vector<PlateScreen> plates;
    if (words.set) {
        plates = screensOfSet(*words.set, {request.frequency, request.angle, request.spot});
        request.frequency = request.spot = std::nullopt;
    }
    for (const std::string &plate : words.plates)
        setPlate(plates, plateGiven(plate));
    const auto rest = std::find_if(plates.begin(), plates.end(),
                                   [](const PlateScreen &plate) { return plate.plate == screens::kRestOfPlates; });
    if (rest != plates.end()) {
        askDialogs(request, *rest);
        request.spotOfSet = words.set.has_value();
        plates.erase(rest);
    }
    for (const PlateScreen &plate : plates)
        request.plates.push_back(pieceOf(plate));
    if (const auto angle = screens::numberFromText(request.angle.value_or("")); angle && *angle < 0)
        if (screens::wrongAngle(*angle).empty())
            request.angle = dialogAngle(*angle);
    const PlateScreen others = askedOfDialogs(request);
    if (others.frequency || others.angle || !others.shape.empty())
        plates.push_back(others);
    return plates;
}

}  // namespace riders::commands
