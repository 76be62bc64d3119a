#include "film/resolution_text.h"

#include <charconv>

#include "film/request.h"
#include "io/decimal.h"

namespace riders::film {
namespace {

std::optional<double> dpiFromText(std::string_view text)
{
    int dpi = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), dpi);
    if (error != std::errc() || end != text.data() + text.size() || dpi < kLeastFilmDpi || dpi > kMostFilmDpi)
        return std::nullopt;
    return dpi;
}

}  // namespace

std::optional<screening::Resolution> resolutionFromText(std::string_view text)
{
    const std::size_t times = text.find('x');
    const std::optional<double> across = dpiFromText(text.substr(0, times)),
                                down = times == text.npos ? across : dpiFromText(text.substr(times + 1));
    if (!across || !down)
        return std::nullopt;
    return screening::Resolution{*across, *down};
}

std::string resolutionText(const screening::Resolution &resolution)
{
    const std::string across = io::decimal(resolution.across, 0), down = io::decimal(resolution.down, 0);
    return across == down ? across : across + "x" + down;
}

}  // namespace riders::film
