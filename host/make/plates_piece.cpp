#include "make/plates_piece.h"

#include <cmath>
#include <string_view>

#include "apply/riders_file.h"
#include "io/hex_string.h"
#include "io/plain_text.h"
#include "io/refusal.h"
#include "reading/written_in.h"

namespace riders::make {

// The piece's PostScript: what reads and tries a dot shape, from the plug-in's pieces; then what the entries use.
extern const std::string_view kSpotReading, kSpotTrying, kPlatesBegin, kPlatesChange, kSpotPlates, kPagePlate;

namespace {

// With this line the plug-in's last piece begins, before which the piece goes.
constexpr std::string_view kSetup = "\n%Zu3_RidersSetup\n";
// What follows texts of the user's, which could look like that line.
constexpr std::string_view kAfterShape = "%end-of-dot-shape%", kAfterText = "%%EndDocument";
constexpr size_t kLongestName = 127;  // of any name in PostScript

size_t placeIn(const std::string &riders)
{
    if (!apply::isRidersFile(riders) || !apply::isWholeRiders(riders))
        throw io::Refusal("what the plates' screens are for is no whole riders file; make it again");
    const size_t at = riders.rfind(kSetup);
    if (at == std::string::npos || riders.find(kAfterShape, at) != std::string::npos ||
        riders.find(kAfterText, at) != std::string::npos)
        throw io::Refusal("the riders file was made before plates could have screens of their own; make it again");
    return at + 1;
}

std::string numberOf(double value, const std::string &plate)
{
    if (!std::isfinite(value))
        throw io::Refusal("the screen of plate " + io::plainText(plate) + " has a number that is none");
    char digits[32];
    std::snprintf(digits, sizeof digits, "%.10g", value);
    return digits;
}

void checkName(const std::string &plate)
{
    if (plate.empty())
        throw io::Refusal("a plate with a screen of its own needs a name");
    if (plate.size() > kLongestName)
        throw io::Refusal("the name of a plate cannot be longer than 127 bytes: " + io::plainText(plate));
    if (plate == "*")
        throw io::Refusal("* is no plate: what holds for all is chosen when the riders file is made");
}

std::string entryOf(const PlatePiece &piece)
{
    checkName(piece.plate);
    const std::string name = io::hexString(piece.plate);
    std::string text;
    if (piece.frequency)
        text += name + " 0 " + numberOf(*piece.frequency, piece.plate) + " riderOnPlate\n";
    if (piece.angle)
        text += name + " 1 " + numberOf(*piece.angle, piece.plate) + " riderOnPlate\n";
    if (!piece.spotBody.empty())
        text += name + " riderShapeOnPlate " + piece.spotBody + "\n" + std::string(kAfterShape) + "\n";
    return text;
}

}  // namespace

std::string withPlates(std::string riders, const std::vector<PlatePiece> &plates)
{
    const size_t place = placeIn(riders);
    if (plates.empty())
        return riders;
    std::string piece(kPlatesBegin);
    for (const std::string_view part : {kSpotReading, kSpotTrying, kPlatesChange, kSpotPlates, kPagePlate})
        piece += part;
    piece += std::to_string(plates.size()) + " riderAddPlates\n";
    for (const PlatePiece &plate : plates)
        piece += entryOf(plate);
    if (riders.size() + piece.size() > apply::kLongestRiders)
        throw io::Refusal("with the plates' screens the riders file would be longer than 1 MiB");
    return riders.insert(place, piece);
}

std::string withShapeNames(std::string riders, const std::string &ofRest, const std::vector<PlatePiece> &plates)
{
    std::string names = ofRest.empty() ? "" : reading::shapeNameLine("*", ofRest);
    for (const PlatePiece &plate : plates)
        if (!plate.spotFile.empty())
            names += reading::shapeNameLine(plate.plate, plate.spotFile);
    if (names.empty())
        return riders;
    const size_t place = placeIn(riders);
    if (riders.size() + names.size() > apply::kLongestRiders)
        throw io::Refusal("with the names of the dot shapes the riders file would be longer than 1 MiB");
    return riders.insert(place, names);
}

}  // namespace riders::make
