// Mac OS Roman inside, UTF-8 outside: the only place where one is converted to
// the other.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "toolbox/types.h"

namespace toolbox {

// All 256 bytes can be converted; 0xF0 is U+F8FF.
std::string utf8FromRoman(std::string_view roman);
std::string utf8FromPascal(const unsigned char *pascalString);
// Letters followed by a combining mark (grave, acute, circumflex, tilde,
// diaeresis, ring, cedilla) are composed first; the ohm, angstrom and Greek mu
// and delta signs are converted like the characters that look the same. Nothing
// if Mac OS Roman lacks a character or the bytes are not UTF-8. Line ends are left
// alone.
std::optional<std::string> romanFromUtf8(std::string_view utf8);
// The same, with a '?' for each character that it lacks and each byte that is not
// UTF-8.
std::string romanFromUtf8Lossy(std::string_view utf8);

// Copies into a Pascal string with the given capacity (255, 63, 31 or 15),
// cutting what is too long. The text may lie in the string itself.
void setPascal(unsigned char *pascalString, std::string_view roman, int capacity = 255);
// The characters, valid until the string is changed; none for nil.
inline std::string_view pascalView(const unsigned char *pascalString)
{
    if (!pascalString)
        return {};
    return {reinterpret_cast<const char *>(pascalString) + 1, pascalString[0]};
}

}  // namespace toolbox
