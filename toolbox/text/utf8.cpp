#include "toolbox/host/utf8.h"

namespace toolbox {
namespace {

// How many bytes the first one announces; 0 where it does not begin a character.
std::size_t lengthFrom(unsigned char first)
{
    if (first < 0x80)
        return 1;
    if (first < 0xC2 || first >= 0xF5)
        return 0;
    return first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

bool follows(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

bool isOverlong(char32_t codePoint, std::size_t length)
{
    return (length == 3 && codePoint < 0x800) || (length == 4 && codePoint < 0x10000);
}

bool isCharacter(char32_t codePoint)
{
    const bool surrogate = codePoint >= 0xD800 && codePoint < 0xE000;
    return !surrogate && codePoint <= 0x10FFFF;
}

}  // namespace

char32_t takeCodePoint(std::string_view &utf8)
{
    const auto first = static_cast<unsigned char>(utf8[0]);
    const std::size_t length = lengthFrom(first);
    char32_t codePoint = length == 1 ? first : first & (0x7F >> length);
    bool good = length > 0 && length <= utf8.size();
    for (std::size_t i = 1; good && i < length; ++i) {
        good = follows(utf8[i]);
        codePoint = codePoint << 6 | (static_cast<unsigned char>(utf8[i]) & 0x3F);
    }
    good = good && !isOverlong(codePoint, length) && isCharacter(codePoint);
    utf8.remove_prefix(good ? length : 1);
    return good ? codePoint : noCodePoint;
}

std::optional<std::u32string> codePoints(std::string_view utf8)
{
    std::u32string points;
    while (!utf8.empty()) {
        points += takeCodePoint(utf8);
        if (points.back() == noCodePoint)
            return std::nullopt;
    }
    return points;
}

bool isUtf8(std::string_view utf8)
{
    while (!utf8.empty())
        if (takeCodePoint(utf8) == noCodePoint)
            return false;
    return true;
}

void appendUtf8(std::string &utf8, char32_t codePoint)
{
    auto tail = [&](int shift) { return static_cast<char>(0x80 | (codePoint >> shift & 0x3F)); };
    if (codePoint < 0x80)
        utf8 += static_cast<char>(codePoint);
    else if (codePoint < 0x800)
        utf8 += {static_cast<char>(0xC0 | codePoint >> 6), tail(0)};
    else if (codePoint < 0x10000)
        utf8 += {static_cast<char>(0xE0 | codePoint >> 12), tail(6), tail(0)};
    else
        utf8 += {static_cast<char>(0xF0 | codePoint >> 18), tail(12), tail(6), tail(0)};
}

std::size_t endOfCharacter(std::string_view utf8, std::size_t offset)
{
    ++offset;
    while (offset < utf8.size() && follows(utf8[offset]))
        ++offset;
    return offset;
}

std::size_t beginningOfCharacter(std::string_view utf8, std::size_t offset)
{
    while (offset > 0 && offset < utf8.size() && follows(utf8[offset]))
        --offset;
    return offset;
}

}  // namespace toolbox
