#include "io/hex_string.h"

namespace riders::io {

std::string hexString(std::string_view bytes)
{
    constexpr const char *kDigits = "0123456789ABCDEF";
    std::string text = "<";
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text += kDigits[byte >> 4];
        text += kDigits[byte & 15];
    }
    return text + ">";
}

}  // namespace riders::io
