#include "screens/plate_spelling.h"

#include <algorithm>
#include <string_view>

#include "io/refusal.h"
#include "screens/number_text.h"
#include "screens/screen_limits.h"

namespace riders::screens {
namespace {

constexpr const char *kForm = "NAME:LPI@ANGLE,SHAPE";
constexpr std::string_view kSpot = "spot-";

std::string_view trimmed(std::string_view part)
{
    const std::size_t start = std::min(part.find_first_not_of(' '), part.size());
    return part.substr(start, part.find_last_not_of(' ') + 1 - start);
}

[[noreturn]] void refuse(const std::string &text, const std::string &expected)
{
    throw io::Refusal("\"" + text + "\": expected " + expected);
}

// Takes the name and its colon off the front.
std::string takeName(std::string_view &rest, const std::string &text)
{
    std::string name;
    while (!rest.empty() && (rest[0] != ':' || rest.starts_with("::"))) {
        name += rest[0];
        rest.remove_prefix(rest[0] == ':' ? 2 : 1);
    }
    if (rest.empty())
        refuse(text, std::string("a colon after the plate's name, as in ") + kForm);
    rest.remove_prefix(1);
    name = plateName(std::string(trimmed(name)));
    if (const std::string expected = wrongPlateName(name); !expected.empty())
        refuse(text, expected);
    return name;
}

double numberFrom(std::string_view part, std::string (*wrong)(double), const std::string &text)
{
    const std::optional<double> value = numberFromText(part);
    if (const std::string expected = wrong(value.value_or(-1e9)); !expected.empty())
        refuse(text, expected + ", not \"" + std::string(part) + "\"");
    return *value;
}

// Takes what is before the separator off the front, and the separator.
std::string_view takePart(std::string_view &rest, char separator, std::size_t from = 0)
{
    const std::size_t end = from > rest.size() ? rest.size() : std::min(rest.find(separator, from), rest.size());
    const std::string_view part = trimmed(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return part;
}

// Where the numbers end: at the first comma that is no decimal comma.
std::size_t endOfNumbers(std::string_view rest)
{
    constexpr std::string_view digits = "0123456789";
    for (std::size_t from = 0;;) {
        const std::size_t comma = rest.find(',', from);
        if (comma == rest.npos || comma == 0)
            return comma;
        const std::size_t before = rest.find_last_not_of(digits, comma - 1);
        const std::size_t after = std::min(rest.find_first_not_of(digits, comma + 1), rest.size());
        const bool whole = before == comma - 1 || (before != rest.npos && rest[before] == '.');
        if (whole || after == comma + 1 || (after < rest.size() && rest[after] != '@' && rest[after] != ','))
            return comma;
        from = after;
        if (from < rest.size() && rest[from] == ',')
            return from;
    }
}

void takeParts(PlateScreen &screen, std::string_view rest, const std::string &text)
{
    std::string_view numbers = takePart(rest, ',', endOfNumbers(rest));
    screen.shape = trimmed(rest);
    const bool angled = numbers.find('@') != std::string_view::npos;
    if (const std::string_view frequency = takePart(numbers, '@'); !frequency.empty())
        screen.frequency = numberFrom(frequency, wrongFrequency, text);
    if (angled)
        screen.angle = numberFrom(trimmed(numbers), wrongAngle, text);
}

// The angle may begin with a hyphen of its own.
void takeSpot(PlateScreen &screen, std::string_view rest, const std::string &text)
{
    screen.frequency = numberFrom(takePart(rest, '-'), wrongFrequency, text);
    screen.angle = numberFrom(takePart(rest, '-', 1), wrongAngle, text);
    screen.shape = rest;
}

}  // namespace

PlateScreen plateFromText(const std::string &text)
{
    std::string_view rest = text;
    PlateScreen screen;
    screen.plate = takeName(rest, text);
    rest = trimmed(rest);
    if (rest.starts_with(kSpot))
        takeSpot(screen, rest.substr(kSpot.size()), text);
    else
        takeParts(screen, rest, text);
    if (hasControlCharacters(screen.shape))
        refuse(text, "a dot shape in UTF-8 without control characters");
    if (!screen.frequency && !screen.angle && screen.shape.empty())
        refuse(text, std::string("a frequency, an angle or a dot shape, as in ") + kForm);
    return screen;
}

std::string textFromPlate(const PlateScreen &screen)
{
    std::string text;
    for (const char letter : screen.plate)
        text += letter == ':' ? "::" : std::string(1, letter);
    text += ':';
    if (screen.frequency)
        text += numberText(*screen.frequency);
    if (screen.angle)
        text += '@' + numberText(*screen.angle);
    // A blank keeps digits from being read as decimals.
    const bool digit = !screen.shape.empty() && screen.shape[0] >= '0' && screen.shape[0] <= '9';
    return screen.shape.empty() ? text : text + (digit ? ", " : ",") + screen.shape;
}

std::string plateInWords(const PlateScreen &screen)
{
    std::string words = screen.plate == kRestOfPlates ? "" : screen.plate;
    if (screen.frequency)
        words += ' ' + numberText(*screen.frequency) + " lpi";
    if (screen.angle)
        words += " at " + numberText(*screen.angle) + "°";
    if (!screen.shape.empty())
        words += (screen.frequency || screen.angle ? ", " : " ") + screen.shape;
    return words.starts_with(' ') ? words.substr(1) : words;
}

}  // namespace riders::screens
