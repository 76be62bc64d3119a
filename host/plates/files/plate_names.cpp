#include "plates/files/plate_names.h"

#include <cctype>

namespace riders::plates {
namespace {

constexpr size_t kLongestName = 40;

int hexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

// Bytes of the character that begins here; 0 where it is no UTF-8.
size_t sequenceAt(const std::string &text, size_t at)
{
    const auto byte = [&text](size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0u; };
    const unsigned first = byte(at);
    const size_t length = first < 0x80                    ? 1
                          : first >= 0xC2 && first < 0xE0 ? 2
                          : first >= 0xE0 && first < 0xF0 ? 3
                          : first >= 0xF0 && first < 0xF5 ? 4
                                                          : 0;
    unsigned value = length > 1 ? first & (0x7Fu >> length) : first;
    for (size_t i = 1; i < length; ++i) {
        if ((byte(at + i) & 0xC0) != 0x80)
            return 0;
        value = value << 6 | (byte(at + i) & 0x3F);
    }
    const bool overlong = (length == 3 && value < 0x800) || (length == 4 && value < 0x10000);
    return overlong || value > 0x10FFFF || (value >= 0xD800 && value < 0xE000) ? 0 : length;
}

bool isUtf8(const std::string &text)
{
    for (size_t at = 0; at < text.size();) {
        const size_t length = sequenceAt(text, at);
        if (length == 0)
            return false;
        at += length;
    }
    return true;
}

std::string fromLatin1(const std::string &bytes)
{
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            text += c;
        } else {
            text += static_cast<char>(0xC0 | byte >> 6);
            text += static_cast<char>(0x80 | (byte & 0x3F));
        }
    }
    return text;
}

}  // namespace

std::string plainText(const std::string &bytes)
{
    std::string text = isUtf8(bytes) ? bytes : fromLatin1(bytes);
    for (char &c : text)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F)
            c = ' ';
    return text;
}

std::string inkBytesFrom(const std::string &interpreters)
{
    std::string bytes;
    for (size_t i = 0; i < interpreters.size(); ++i) {
        const int high =
            interpreters[i] == '%' && i + 2 < interpreters.size() ? hexDigit(interpreters[i + 1]) : -1;
        const int low = high >= 0 ? hexDigit(interpreters[i + 2]) : -1;
        bytes += low >= 0 ? static_cast<char>(high * 16 + low) : interpreters[i];
        i += low >= 0 ? 2 : 0;
    }
    return bytes;
}

std::string plateNameFrom(const std::string &interpreters)
{
    return plainText(inkBytesFrom(interpreters));
}

std::string fileNameFor(const std::string &plate, std::set<std::string> &taken)
{
    std::string name;
    for (const char c : plate) {
        const bool plain = std::isalnum(static_cast<unsigned char>(c)) && static_cast<unsigned char>(c) < 0x80;
        if (plain)
            name += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        else if (!name.empty() && name.back() != '-')
            name += '-';
    }
    name = name.substr(0, kLongestName);
    name.erase(name.find_last_not_of('-') + 1);
    if (name.empty())
        name = "ink";
    std::string free = name;
    for (int number = 2; !taken.insert(free).second; ++number)
        free = name + "-" + std::to_string(number);
    return free;
}

}  // namespace riders::plates
