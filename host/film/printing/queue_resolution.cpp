#include "film/printing/queue_resolution.h"

#include <algorithm>
#include <charconv>

#include "io/decimal.h"

namespace riders::printing {
namespace {

constexpr double kSensible = 1200. * 1200.;  // pixels per square inch
constexpr int kMostDpi = 20000;

// A whole number at the beginning, which is taken off.
std::optional<int> takeNumber(std::string_view &text)
{
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || number < 1 || number > kMostDpi)
        return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

double fineness(const QueueResolution &resolution)
{
    return resolution.dpi.across * resolution.dpi.down;
}

}  // namespace

std::optional<screening::Resolution> resolutionFromCode(std::string_view code)
{
    constexpr std::string_view key = "/HWResolution";
    const std::size_t at = code.find(key);
    const std::size_t bracket = at == code.npos ? at : code.find_first_not_of(" \t\r\n", at + key.size());
    if (bracket == code.npos || code[bracket] != '[')
        return std::nullopt;
    code.remove_prefix(bracket + 1);
    const std::optional<int> across = takeNumber(code), down = across ? takeNumber(code) : std::nullopt;
    if (!across || !down)
        return std::nullopt;
    return screening::Resolution{double(*across), double(*down)};
}

std::optional<screening::Resolution> resolutionFromName(std::string_view name)
{
    const std::optional<int> across = takeNumber(name);
    std::optional<int> down = across;
    if (across && !name.empty() && name.front() == 'x') {
        name.remove_prefix(1);
        down = takeNumber(name);
    }
    if (!across || !down || name != "dpi")
        return std::nullopt;
    return screening::Resolution{double(*across), double(*down)};
}

bool same(const screening::Resolution &one, const screening::Resolution &other)
{
    return one.across == other.across && one.down == other.down;
}

std::string inWords(const screening::Resolution &dpi)
{
    const std::string across = io::decimal(dpi.across, 0);
    return dpi.across == dpi.down ? across : across + "x" + io::decimal(dpi.down, 0);
}

std::string inWords(const std::vector<QueueResolution> &resolutions)
{
    std::string words;
    for (const QueueResolution &resolution : resolutions)
        words += (words.empty() ? "" : ", ") + inWords(resolution.dpi);
    return words;
}

const QueueResolution &sensible(const std::vector<QueueResolution> &resolutions)
{
    const QueueResolution *best = nullptr;
    for (const QueueResolution &resolution : resolutions) {
        const bool fits = fineness(resolution) <= kSensible;
        const bool bestFits = best && fineness(*best) <= kSensible;
        const bool finer = best && fineness(resolution) > fineness(*best);
        if (!best || (fits && !bestFits) ||
            (fits == bestFits && (fits ? finer : fineness(resolution) < fineness(*best))))
            best = &resolution;
    }
    return *best;
}

}  // namespace riders::printing
