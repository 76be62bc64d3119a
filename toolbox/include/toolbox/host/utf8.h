// Reading and writing UTF-8, a character at a time. Usable without a session.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace toolbox {

// What takeCodePoint returns for bytes that are not UTF-8; no character has it.
inline constexpr char32_t noCodePoint = 0xFFFFFFFF;

// Takes one character off the front of the bytes, which must not be empty. A byte
// that does not begin a UTF-8 character is taken alone, and noCodePoint returned:
// overlong forms, surrogates and anything beyond U+10FFFF are not UTF-8.
char32_t takeCodePoint(std::string_view &utf8);
// All of them; nothing if any byte is not UTF-8.
std::optional<std::u32string> codePoints(std::string_view utf8);
bool isUtf8(std::string_view utf8);
// The code point must not be above U+10FFFF.
void appendUtf8(std::string &utf8, char32_t codePoint);

// Where the character that begins at the offset, less than the length, ends; and
// where the character that contains the offset, at most the length, begins. In
// bytes that are not UTF-8, those that could follow a first byte go with the byte
// before them.
std::size_t endOfCharacter(std::string_view utf8, std::size_t offset);
std::size_t beginningOfCharacter(std::string_view utf8, std::size_t offset);

}  // namespace toolbox
