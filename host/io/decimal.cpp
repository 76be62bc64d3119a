#include "io/decimal.h"

#include <array>
#include <charconv>

namespace riders::io {

std::string decimal(double value, int digits)
{
    std::array<char, 512> room{};  // for any double and 200 digits
    const std::to_chars_result written =
        std::to_chars(room.data(), room.data() + room.size(), value, std::chars_format::fixed, digits);
    std::string number(room.data(), written.ptr);
    if (number.find('.') != std::string::npos) {
        number.erase(number.find_last_not_of('0') + 1);
        if (number.ends_with('.'))
            number.pop_back();
    }
    return number == "-0" ? "0" : number;
}

}  // namespace riders::io
