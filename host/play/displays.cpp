#include "play/displays.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>

namespace riders::play {
namespace {

bool takeNumber(std::string_view &text, int &value, int least, int most)
{
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc())
        return false;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return value >= least && value <= most;
}

bool takeLetter(std::string_view &text, char letter)
{
    if (text.empty() || text.front() != letter)
        return false;
    text.remove_prefix(1);
    return true;
}

// One display whose left edge lies there.
std::optional<toolbox::Display> takeDisplay(std::string_view &text, int left)
{
    int width = 0, height = 0, depth = 0, scale = 1;
    if (!takeNumber(text, width, shortestSide, longestSide) || !takeLetter(text, 'x') ||
        !takeNumber(text, height, shortestSide, longestSide) || !takeLetter(text, 'x') ||
        !takeNumber(text, depth, 1, 32))
        return std::nullopt;
    if (takeLetter(text, '@') && !takeNumber(text, scale, 1, largestScale))
        return std::nullopt;
    if (!isDepth(depth) || left + width > INT16_MAX)
        return std::nullopt;
    toolbox::Display display{{}, depth, scale};
    display.bounds = {0, static_cast<std::int16_t>(left), static_cast<std::int16_t>(height),
                      static_cast<std::int16_t>(left + width)};
    return display;
}

}  // namespace

bool isDepth(int bits)
{
    return bits == 1 || bits == 2 || bits == 4 || bits == 8 || bits == 32;
}

std::vector<toolbox::Display> displaysFromText(const std::string &text)
{
    std::vector<toolbox::Display> displays;
    std::string_view rest = text;
    do {
        std::optional<toolbox::Display> display =
            takeDisplay(rest, displays.empty() ? 0 : displays.back().bounds.right);
        if (!display)
            return {};
        displays.push_back(*display);
    } while (takeLetter(rest, '+'));
    return rest.empty() ? displays : std::vector<toolbox::Display>{};
}

toolbox::Picture pictureOf(const toolbox::Picture &whole, const toolbox::Display &display, const Rect &global)
{
    auto across = [&](int h) { return std::clamp((h - display.bounds.left) * display.scale, 0, whole.width); };
    auto down = [&](int v) { return std::clamp((v - display.bounds.top) * display.scale, 0, whole.height); };
    const int left = across(global.left), right = std::max(left, across(global.right));
    const int top = down(global.top), bottom = std::max(top, down(global.bottom));
    toolbox::Picture part{right - left, bottom - top, {}};
    for (int v = top; v < bottom; ++v) {
        auto row = whole.pixels.begin() + static_cast<std::ptrdiff_t>(v) * whole.width + left;
        part.pixels.insert(part.pixels.end(), row, row + part.width);
    }
    return part;
}

}  // namespace riders::play
