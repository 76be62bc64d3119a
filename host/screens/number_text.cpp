#include "screens/number_text.h"

#include <charconv>
#include <cmath>

#include "io/decimal.h"

namespace riders::screens {

std::string numberText(double value)
{
    return io::decimal(value, 4);
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
