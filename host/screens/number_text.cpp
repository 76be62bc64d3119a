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
    std::string spelt;
    if (text.find(',') != text.npos)
        text = spelt = withPeriod(std::string(text));
    const char *const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, value, std::chars_format::fixed);
    if (read.ec != std::errc() || read.ptr != end || !std::isfinite(value))
        return {};
    return value;
}

std::string withPeriod(const std::string &text)
{
    const std::size_t comma = text.find(',');
    const auto isDigit = [&](std::size_t at) { return at < text.size() && text[at] >= '0' && text[at] <= '9'; };
    if (comma == text.npos || comma == 0 || !isDigit(comma - 1) || !isDigit(comma + 1) ||
        text.find_first_of(",.", comma + 1) != text.npos || text.find('.') != text.npos)
        return text;
    std::string period = text;
    period[comma] = '.';
    return period;
}

}  // namespace riders::screens
