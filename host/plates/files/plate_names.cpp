#include "plates/files/plate_names.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <string_view>

#include "io/plain_text.h"
#include "plates/files/plate.h"

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

bool isEqualButForCase(std::string_view one, std::string_view other)
{
    return std::equal(one.begin(), one.end(), other.begin(), other.end(), [](char a, char b) {
        return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
    });
}

// Whether it is how the interpreter numbers one of so many inks, from 0.
bool isNumberOf(const std::string &digits, size_t spotInks)
{
    size_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return error == std::errc() && number < spotInks && std::to_string(number) == digits;
}

// A process ink's name in other letters, as cyan or CYAN, is a spot ink's. The interpreter then adds the ink's
// number, so that no two files of plates differ in the case of letters alone.
std::string withoutNumber(const std::string &name, size_t spotInks)
{
    std::string bare = name.substr(0, name.find_last_not_of("0123456789") + 1);
    if (!isNumberOf(name.substr(bare.size()), spotInks))
        return name;
    for (const char *process : kProcessPlates)
        if (bare != process && isEqualButForCase(bare, process))
            return bare;
    return name;
}

}  // namespace

std::string inkBytesFrom(const std::string &interpreters, size_t spotInks)
{
    std::string bytes;
    for (size_t i = 0; i < interpreters.size(); ++i) {
        const int high =
            interpreters[i] == '%' && i + 2 < interpreters.size() ? hexDigit(interpreters[i + 1]) : -1;
        const int low = high >= 0 ? hexDigit(interpreters[i + 2]) : -1;
        bytes += low >= 0 ? static_cast<char>(high * 16 + low) : interpreters[i];
        i += low >= 0 ? 2 : 0;
    }
    return withoutNumber(bytes, spotInks);
}

std::string plateNameFrom(const std::string &interpreters, size_t spotInks)
{
    return io::plainText(inkBytesFrom(interpreters, spotInks));
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
    name.resize(std::min(name.size(), kLongestName));
    name.erase(name.find_last_not_of('-') + 1);
    if (name.empty())
        name = "ink";
    std::string free = name;
    for (int number = 2; !taken.insert(free).second; ++number)
        free = name + "-" + std::to_string(number);
    return free;
}

}  // namespace riders::plates
