#include "io/plain_text.h"

#include <algorithm>

#include "toolbox/host/utf8.h"

namespace riders::io {
namespace {

bool isObeyed(char32_t c)
{
    const bool control = c < 0x20 || (c >= 0x7F && c < 0xA0);
    const bool line = c == 0x2028 || c == 0x2029;
    const bool direction =
        c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
    return control || line || direction;
}

}  // namespace

std::string plainText(const std::string &bytes)
{
    const bool utf8 = toolbox::isUtf8(bytes);
    std::string text;
    for (std::string_view rest = bytes; !rest.empty();) {
        const char32_t first = static_cast<unsigned char>(rest[0]);
        const char32_t c = utf8 ? toolbox::takeCodePoint(rest) : first;
        if (!utf8)
            rest.remove_prefix(1);
        toolbox::appendUtf8(text, isObeyed(c) ? U' ' : c);
    }
    return text;
}

std::string plainLines(const std::string &bytes)
{
    std::string text;
    for (size_t at = 0; at < bytes.size();) {
        const size_t end = std::min(bytes.find('\n', at), bytes.size());
        text += plainText(bytes.substr(at, end - at));
        if (end < bytes.size())
            text += '\n';
        at = end + 1;
    }
    return text;
}

}  // namespace riders::io
