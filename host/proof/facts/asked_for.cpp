#include "proof/facts/asked_for.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "io/bytes.h"
#include "plates/files/plate.h"

namespace riders::proof {
namespace {

constexpr size_t kLongestRiders = 1 << 20;

// What the pieces of a riders file have before and after the body of a dot shape, and before the annotation.
constexpr std::string_view kBeforeShape = "\nriderReadSpot ", kAfterShape = "%end-of-dot-shape%";
constexpr std::string_view kBeforeAnnotation = "\n/riderFont ";

// A dot shape may hold anything, also what looks like a piece.
std::string withoutShape(std::string riders)
{
    const size_t start = riders.find(kBeforeShape), end = riders.find(kAfterShape, start);
    if (start != std::string::npos && end != std::string::npos)
        riders.erase(start, end - start);
    return riders;
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

bool isSame(const plates::AskedScreens &one, const plates::AskedScreens &other)
{
    return std::equal(one.begin(), one.end(), other.begin(), other.end(), [](const auto &a, const auto &b) {
        return a.first == b.first && a.second.frequency == b.second.frequency &&
               a.second.angle == b.second.angle && a.second.shape == b.second.shape;
    });
}

}  // namespace

AskedFor askedByRiders(const std::filesystem::path &riders)
{
    const io::OpenFile in = io::openInput(riders);
    std::string text(kLongestRiders, '\0');
    text.resize(io::readFully(in, text.data(), text.size()));
    text = withoutShape(std::move(text));
    const size_t annotation = text.find(kBeforeAnnotation);
    const std::string screen = text.substr(0, annotation);
    return {definedNumber(screen, "/riderFrequency "), definedNumber(screen, "/riderAngle "), "the riders file",
            true, annotation != std::string::npos};
}

AskedFor askedFor(const std::string &plate, const AskedFor &riders, const plates::AskedScreens &page,
                  const plates::AskedScreens &interpreter)
{
    AskedFor asked;
    auto found = page.find(plate);
    if (found == page.end())
        found = page.find("Default");
    if (found == page.end() && !plates::isProcessPlate(plate))
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

}  // namespace riders::proof
