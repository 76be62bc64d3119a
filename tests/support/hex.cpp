#include "support/hex.h"

#include <cctype>

std::string fromHex(const std::string &hex)
{
    std::string bytes, digits;
    for (char c : hex) {
        if (!std::isxdigit(static_cast<unsigned char>(c)))
            continue;
        digits += c;
        if (digits.size() == 2) {
            bytes += static_cast<char>(std::stoi(digits, nullptr, 16));
            digits.clear();
        }
    }
    return bytes;
}
