#include "io/decimal.h"

#include <cstdio>

namespace riders::io {

std::string decimal(double value, int digits)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", digits, value);
    std::string number = text;
    if (number.find('.') != std::string::npos) {
        number.erase(number.find_last_not_of('0') + 1);
        if (number.ends_with('.'))
            number.pop_back();
    }
    return number == "-0" ? "0" : number;
}

}  // namespace riders::io
