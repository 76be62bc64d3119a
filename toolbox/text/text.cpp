#include "toolbox/host/text.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <unordered_map>

#include "toolbox/host/utf8.h"

namespace toolbox {
namespace {

// The upper half of Mac OS Roman, as since Mac OS 8.5 (0xDB is the euro sign).
constexpr std::array<char16_t, 128> upperHalf = {
    0x00C4, 0x00C5, 0x00C7, 0x00C9, 0x00D1, 0x00D6, 0x00DC, 0x00E1,
    0x00E0, 0x00E2, 0x00E4, 0x00E3, 0x00E5, 0x00E7, 0x00E9, 0x00E8,
    0x00EA, 0x00EB, 0x00ED, 0x00EC, 0x00EE, 0x00EF, 0x00F1, 0x00F3,
    0x00F2, 0x00F4, 0x00F6, 0x00F5, 0x00FA, 0x00F9, 0x00FB, 0x00FC,
    0x2020, 0x00B0, 0x00A2, 0x00A3, 0x00A7, 0x2022, 0x00B6, 0x00DF,
    0x00AE, 0x00A9, 0x2122, 0x00B4, 0x00A8, 0x2260, 0x00C6, 0x00D8,
    0x221E, 0x00B1, 0x2264, 0x2265, 0x00A5, 0x00B5, 0x2202, 0x2211,
    0x220F, 0x03C0, 0x222B, 0x00AA, 0x00BA, 0x03A9, 0x00E6, 0x00F8,
    0x00BF, 0x00A1, 0x00AC, 0x221A, 0x0192, 0x2248, 0x2206, 0x00AB,
    0x00BB, 0x2026, 0x00A0, 0x00C0, 0x00C3, 0x00D5, 0x0152, 0x0153,
    0x2013, 0x2014, 0x201C, 0x201D, 0x2018, 0x2019, 0x00F7, 0x25CA,
    0x00FF, 0x0178, 0x2044, 0x20AC, 0x2039, 0x203A, 0xFB01, 0xFB02,
    0x2021, 0x00B7, 0x201A, 0x201E, 0x2030, 0x00C2, 0x00CA, 0x00C1,
    0x00CB, 0x00C8, 0x00CD, 0x00CE, 0x00CF, 0x00CC, 0x00D3, 0x00D4,
    0xF8FF, 0x00D2, 0x00DA, 0x00DB, 0x00D9, 0x0131, 0x02C6, 0x02DC,
    0x00AF, 0x02D8, 0x02D9, 0x02DA, 0x00B8, 0x02DD, 0x02DB, 0x02C7,
};

// Other code points for what is one character in Mac OS Roman: the ohm and
// angstrom signs, Greek mu and delta.
struct Alias {
    char32_t codePoint;
    unsigned char roman;
};
constexpr Alias aliases[] = {{0x2126, 0xBD}, {0x212B, 0x81}, {0x03BC, 0xB5}, {0x0394, 0xC6}};

struct Composition {
    char32_t mark;
    const char *bases;
    const char16_t *letters;
};
constexpr Composition compositions[] = {
    {0x0300, "AEIOUaeiou", u"ÀÈÌÒÙàèìòù"},         // grave
    {0x0301, "AEIOUaeiou", u"ÁÉÍÓÚáéíóú"},         // acute
    {0x0302, "AEIOUaeiou", u"ÂÊÎÔÛâêîôû"},         // circumflex
    {0x0303, "ANOano", u"ÃÑÕãñõ"},                 // tilde
    {0x0308, "AEIOUYaeiouy", u"ÄËÏÖÜŸäëïöüÿ"},     // diaeresis
    {0x030A, "Aa", u"Åå"},                         // ring
    {0x0327, "Cc", u"Çç"},                         // cedilla
    {0x0338, "=", u"≠"},                           // long solidus
};

std::optional<unsigned char> romanOf(char32_t codePoint)
{
    static const std::unordered_map<char32_t, unsigned char> table = [] {
        std::unordered_map<char32_t, unsigned char> made;
        for (std::size_t i = 0; i < upperHalf.size(); ++i)
            made[upperHalf[i]] = static_cast<unsigned char>(0x80 + i);
        for (const Alias &alias : aliases)
            made[alias.codePoint] = alias.roman;
        return made;
    }();
    if (codePoint < 0x80)
        return static_cast<unsigned char>(codePoint);
    auto found = table.find(codePoint);
    if (found == table.end())
        return std::nullopt;
    return found->second;
}

// The letter that a plain letter and a combining mark form together.
std::optional<char32_t> composed(char32_t base, char32_t mark)
{
    for (const Composition &composition : compositions) {
        if (composition.mark != mark || base >= 0x80 || base == 0)
            continue;
        if (const char *at = std::strchr(composition.bases, static_cast<int>(base)))
            return composition.letters[at - composition.bases];
    }
    return std::nullopt;
}

// Converts; every character that Mac OS Roman lacks sets misfit and becomes '?'.
std::string convert(std::string_view utf8, bool &misfit)
{
    std::string roman;
    roman.reserve(utf8.size());
    char32_t before = noCodePoint;
    while (!utf8.empty()) {
        char32_t codePoint = takeCodePoint(utf8);
        if (auto letter = composed(before, codePoint)) {
            codePoint = *letter;
            roman.pop_back();
        }
        before = codePoint;
        auto byte = romanOf(codePoint);
        misfit = misfit || !byte;
        roman += static_cast<char>(byte.value_or('?'));
    }
    return roman;
}

}  // namespace

std::string utf8FromRoman(std::string_view roman)
{
    std::string utf8;
    utf8.reserve(roman.size());
    for (char c : roman) {
        auto byte = static_cast<unsigned char>(c);
        appendUtf8(utf8, byte < 0x80 ? byte : upperHalf[byte - 0x80]);
    }
    return utf8;
}

std::string utf8FromPascal(const unsigned char *pascalString)
{
    return utf8FromRoman(pascalView(pascalString));
}

std::optional<std::string> romanFromUtf8(std::string_view utf8)
{
    bool misfit = false;
    std::string roman = convert(utf8, misfit);
    if (misfit)
        return std::nullopt;
    return roman;
}

std::string romanFromUtf8Lossy(std::string_view utf8)
{
    bool misfit = false;
    return convert(utf8, misfit);
}

void setPascal(unsigned char *pascalString, std::string_view roman, int capacity)
{
    std::size_t length = std::min<std::size_t>(roman.size(), static_cast<std::size_t>(std::clamp(capacity, 0, 255)));
    // The text may lie in the string itself, so the length is written last.
    if (length > 0)
        std::memmove(pascalString + 1, roman.data(), length);
    pascalString[0] = static_cast<unsigned char>(length);
}

}  // namespace toolbox
