#include "io/json.h"

#include <array>
#include <charconv>
#include <cmath>

#include "toolbox/host/utf8.h"

namespace riders::io {
namespace {

void appendCharacter(std::string &json, char32_t c)
{
    if (c == U'"' || c == U'\\') {
        json += '\\';
        json += static_cast<char>(c);
    } else if (c < 0x20 || c == 0x7F) {
        constexpr std::string_view digits = "0123456789abcdef";
        json += "\\u00";
        json += digits[c >> 4];
        json += digits[c & 15];
    } else {
        toolbox::appendUtf8(json, c);
    }
}

std::string joined(const std::vector<std::string> &parts)
{
    std::string all;
    for (const std::string &part : parts)
        all += (all.empty() ? "" : ", ") + part;
    return all;
}

}  // namespace

std::string jsonText(std::string_view text)
{
    const bool utf8 = toolbox::isUtf8(text);
    std::string json = "\"";
    while (!text.empty()) {
        const char32_t latin = static_cast<unsigned char>(text[0]);
        appendCharacter(json, utf8 ? toolbox::takeCodePoint(text) : latin);
        if (!utf8)
            text.remove_prefix(1);
    }
    return json + '"';
}

std::string jsonNumber(double value)
{
    if (!std::isfinite(value))
        return "null";
    std::array<char, 64> room{};
    return {room.data(), std::to_chars(room.data(), room.data() + room.size(), value).ptr};
}

std::string jsonObject(const std::vector<std::pair<std::string, std::string>> &members)
{
    std::vector<std::string> parts;
    parts.reserve(members.size());
    for (const auto &[name, value] : members)
        parts.push_back(jsonText(name) + ": " + value);
    return "{" + joined(parts) + "}";
}

std::string jsonArray(const std::vector<std::string> &values)
{
    return "[" + joined(values) + "]";
}

}  // namespace riders::io
