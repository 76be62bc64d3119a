#include "screens/number_text.h"

#include <array>
#include <charconv>
#include <cmath>

namespace riders::screens {

std::string numberText(double value)
{
    constexpr int mostDecimals = 4;
    std::array<char, 512> room{};
    const auto end =
        std::to_chars(room.data(), room.data() + room.size(), value, std::chars_format::fixed, mostDecimals);
    std::string text(room.data(), end.ptr);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.'))
        text.pop_back();
    return text == "-0" ? "0" : text;
}

std::optional<double> numberFromText(std::string_view text)
{
    double value = 0;
    const char *const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, value, std::chars_format::fixed);
    if (read.ec != std::errc() || read.ptr != end || !std::isfinite(value))
        return {};
    return value;
}

}  // namespace riders::screens
