#include "plates/measuring/asked_for.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "io/bytes.h"
#include "plates/files/plate.h"

namespace riders::plates {
namespace {

constexpr size_t kLongestRiders = 1 << 20;

// What the pieces of a riders file have before and after the body of a dot shape, and before the annotation.
constexpr std::string_view kBeforeShape = "\nriderReadSpot ", kAfterShape = "%end-of-dot-shape%";
constexpr std::string_view kBeforeAnnotation = "\n/riderFont ";
// How the piece for single plates and the last piece begin.
constexpr std::string_view kPlates = "\n%Zu3_RidersPlates\n", kSetup = "\n%Zu3_RidersSetup\n";

// A dot shape may hold anything, also what looks like a piece.
std::string withoutShape(std::string riders)
{
    const size_t start = riders.find(kBeforeShape), end = riders.find(kAfterShape, start);
    if (start != std::string::npos && end != std::string::npos)
        riders.erase(start, end - start);
    return riders;
}

// Takes the piece for single plates off the text, which has all that comes before it left.
std::string takePlates(std::string &riders)
{
    const size_t start = riders.rfind(kPlates, riders.rfind(kSetup));
    if (start == std::string::npos)
        return {};
    std::string piece = riders.substr(start);
    riders.erase(start);
    return piece;
}

// The bytes of "<4379616E> ..."; empty for a line that does not begin so.
std::string nameFrom(const std::string &line)
{
    const size_t end = line.find('>');
    if (!line.starts_with('<') || end == std::string::npos)
        return {};
    std::string name;
    for (size_t at = 1; at + 2 <= end; at += 2)
        name += static_cast<char>(std::strtol(line.substr(at, 2).c_str(), nullptr, 16));
    return name;
}

// Of lines such as "<4379616E> 0 60 riderOnPlate", 0 for the frequency and 1 for the angle. A dot shape between
// them may hold anything.
std::map<std::string, AskedOfPlate> askedOfPlates(const std::string &piece)
{
    std::map<std::string, AskedOfPlate> plates;
    for (size_t at = 0, end = 0; at < piece.size(); at = end + 1) {
        end = std::min(piece.find('\n', at), piece.size());
        const std::string line = piece.substr(at, end - at), name = nameFrom(line);
        const std::string rest = name.empty() ? "" : line.substr(line.find('>') + 1);
        double number = 0;
        if (int element = 0;
            std::sscanf(rest.c_str(), " %1d %lf riderOnPlate", &element, &number) == 2 && std::isfinite(number))
            (element == 0 ? plates[name].frequency : plates[name].angle) = number;
        else if (rest.starts_with(" riderShapeOnPlate "))
            end = std::min(piece.find(kAfterShape, at), piece.size());
    }
    return plates;
}

// The number of the first "/name number" there is.
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

bool isSame(const AskedScreens &one, const AskedScreens &other)
{
    return std::equal(one.begin(), one.end(), other.begin(), other.end(), [](const auto &a, const auto &b) {
        return a.first == b.first && a.second.frequency == b.second.frequency &&
               a.second.angle == b.second.angle && a.second.shape == b.second.shape;
    });
}

}  // namespace

std::string refusedOfRiders(const std::vector<std::string> &said)
{
    constexpr std::string_view kBefore = "%%[ riders: ", kAfter = " ]%%";
    for (const std::string &line : said)
        if (line.starts_with(kBefore) && line.ends_with(kAfter) && line.find("keeps its own") != std::string::npos)
            return line.substr(kBefore.size(), line.size() - kBefore.size() - kAfter.size());
    return {};
}

AskedFor askedByRiders(const std::filesystem::path &riders)
{
    const io::OpenFile in = io::openInput(riders);
    std::string text(kLongestRiders, '\0');
    text.resize(io::readFully(in, text.data(), text.size()));
    const std::map<std::string, AskedOfPlate> ofPlates = askedOfPlates(takePlates(text));
    const bool shaped = text.find(kBeforeShape) < text.find(kBeforeAnnotation);
    text = withoutShape(std::move(text));
    const size_t annotation = text.find(kBeforeAnnotation);
    const std::string screen = text.substr(0, annotation);
    return {definedNumber(screen, "/riderFrequency "),
            definedNumber(screen, "/riderAngle "),
            "the riders file",
            true,
            annotation != std::string::npos,
            shaped,
            false,
            {},
            ofPlates};
}

AskedFor askedFor(const std::string &plate, const AskedFor &riders, const AskedScreens &page,
                  const AskedScreens &interpreter)
{
    AskedFor asked;
    auto found = page.find("Default");
    const std::string meant =
        found == page.end() || found->second.pagePlate.empty() ? plate : found->second.pagePlate;
    if (const auto own = page.find(meant); own != page.end() && own->first != "Default")
        found = own;
    if (found == page.end() && !isProcessPlate(meant))
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
    const auto own = riders.plates.find(meant);
    const AskedOfPlate ofPlate = own == riders.plates.end() ? AskedOfPlate{} : own->second;
    const auto frequency = ofPlate.frequency ? ofPlate.frequency : riders.frequency;
    const auto angle = ofPlate.angle ? ofPlate.angle : riders.angle;
    if (frequency || angle) {
        asked.frequency = frequency ? frequency : asked.frequency;
        asked.angle = angle ? angle : asked.angle;
        asked.binding = true;
        asked.by = riders.by;
    } else if (riders.shaped) {
        asked.refused = !asked.binding;
        asked.binding = true;
        asked.by = riders.by;
    }
    return asked;
}

}  // namespace riders::plates
