#include "html/url.h"

#include <string_view>

namespace riders::html {

std::string urlOf(const std::string &path)
{
    constexpr std::string_view plain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789/-._~";
    constexpr const char *digits = "0123456789ABCDEF";
    std::string url;
    for (const char c : path) {
        const auto byte = static_cast<unsigned char>(c);
        if (plain.find(c) != plain.npos)
            url += c;
        else
            url += {'%', digits[byte >> 4], digits[byte & 15]};
    }
    return url;
}

}  // namespace riders::html
