#include "film/sheet_size.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>

#include "io/plain_text.h"
#include "io/refusal.h"

namespace riders::film {

namespace {

constexpr double kMillimetre = 1 / 25.4, kShortest = 1, kLongest = 400;  // inches

struct Named {
    const char *name;
    double width, height, unit;
};
const Named kNamed[] = {
    {"a0", 841, 1189, kMillimetre},  {"a1", 594, 841, kMillimetre},
    {"a2", 420, 594, kMillimetre},   {"a3", 297, 420, kMillimetre},
    {"a4", 210, 297, kMillimetre},   {"a5", 148, 210, kMillimetre},
    {"a6", 105, 148, kMillimetre},   {"sra0", 900, 1280, kMillimetre},
    {"sra1", 640, 900, kMillimetre}, {"sra2", 450, 640, kMillimetre},
    {"sra3", 320, 450, kMillimetre}, {"sra4", 225, 320, kMillimetre},
    {"a3+", 329, 483, kMillimetre},  {"letter", 8.5, 11, 1},
    {"legal", 8.5, 14, 1},           {"tabloid", 11, 17, 1},
    {"ledger", 11, 17, 1},
};

struct Unit {
    std::string_view name;
    double inches;
};
const Unit kUnits[] = {{"mm", kMillimetre}, {"cm", 10 * kMillimetre}, {"in", 1}, {"pt", 1.0 / 72}};

// Takes a number from the beginning of the text.
std::optional<double> numberAt(std::string_view &text)
{
    if (text.empty() || text[0] < '0' || text[0] > '9')  // no sign, no "inf"
        return std::nullopt;
    double number = 0;
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
    if (error != std::errc())
        return std::nullopt;
    text.remove_prefix(static_cast<size_t>(end - text.data()));
    return number;
}

std::optional<SheetSize> measured(std::string_view text)
{
    const std::optional<double> width = numberAt(text);
    if (!width || text.empty() || text[0] != 'x')
        return std::nullopt;
    text.remove_prefix(1);
    const std::optional<double> height = numberAt(text);
    if (!height)
        return std::nullopt;
    for (const Unit &unit : kUnits)
        if (text == unit.name)
            return SheetSize{.width = *width * unit.inches, .height = *height * unit.inches, .name = {}};
    return std::nullopt;
}

std::optional<SheetSize> named(const std::string &text)
{
    for (const Named &size : kNamed)
        if (text == size.name)
            return SheetSize{
                .width = size.width * size.unit, .height = size.height * size.unit, .turns = true, .name = {}};
    return std::nullopt;
}

}  // namespace

SheetSize sheetSizeFrom(const std::string &text)
{
    std::string lower = text;
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter;
    });
    std::optional<SheetSize> size = named(lower);
    if (!size)
        size = measured(lower);
    if (!size)
        throw io::Refusal("a film's size is a name such as a3 or letter, or width and height such as 420x297mm or "
                          "12x18in, not '" +
                          io::plainText(text) + "'");
    // Written so that what is no number is refused, too.
    const double shorter = std::min(size->width, size->height), longer = std::max(size->width, size->height);
    if (!(shorter >= kShortest && longer <= kLongest))
        throw io::Refusal("each side of a film is from 1 to 400 inches, which '" + io::plainText(text) +
                          "' is not");
    size->name = io::plainText(text);
    return *size;
}

}  // namespace riders::film
