// UTF-8 taken apart and put together, a character at a time. Usable without a
// session.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace toolbox {

// What takeCodePoint returns for bytes that are no UTF-8; no character has it.
inline constexpr char32_t noCodePoint = 0xFFFFFFFF;

// Takes one character off the front of the bytes, of which there must be some. A
// byte that begins no UTF-8 is taken alone, and noCodePoint returned: overlong
// forms, surrogates and what lies beyond U+10FFFF are no UTF-8.
char32_t takeCodePoint(std::string_view &utf8);
// All of them; nothing where a byte is no UTF-8.
std::optional<std::u32string> codePoints(std::string_view utf8);
bool isUtf8(std::string_view utf8);
// The code point must not be above U+10FFFF.
void appendUtf8(std::string &utf8, char32_t codePoint);

// Where the character that begins at the offset, which must lie within, ends; and
// the beginning of the character that the offset, at most the length, lies in. Of
// bytes that are no UTF-8 those that could follow a first byte go with the byte
// before them.
std::size_t endOfCharacter(std::string_view utf8, std::size_t offset);
std::size_t beginningOfCharacter(std::string_view utf8, std::size_t offset);

}  // namespace toolbox
