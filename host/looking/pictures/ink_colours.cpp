#include "looking/pictures/ink_colours.h"

#include <cmath>
#include <cstdio>

#include "plates/files/plate.h"

namespace riders::looking {
namespace {

// Roughly what offset inks look like on coated paper; black is a little lighter than black, for the rosette.
constexpr Colour kProcessInks[] = {{0, 158, 224}, {230, 0, 126}, {255, 237, 0}, {29, 29, 27}};
constexpr Colour kUnknownInk = {90, 100, 160};

}  // namespace

Colour inkColour(const std::string &plate, const std::map<std::string, std::array<double, 4>> &spotInks)
{
    for (size_t i = 0; i < 4; ++i)
        if (plate == plates::kProcessPlates[i])
            return kProcessInks[i];
    const auto spot = spotInks.find(plate);
    if (spot == spotInks.end())
        return kUnknownInk;
    Colour colour;
    double all = 0;
    for (size_t i = 0; i < 4; ++i) {
        colour = multiply(colour, tintOf(kProcessInks[i], static_cast<int>(std::lround(spot->second[i] * 255))));
        all += spot->second[i];
    }
    return all > 0.02 ? colour : kUnknownInk;  // a white ink would not be seen
}

std::string hexColour(Colour colour)
{
    char text[8];
    std::snprintf(text, sizeof text, "#%02x%02x%02x", colour.red, colour.green, colour.blue);
    return text;
}

Colour colourFrom(const std::string &hex)
{
    unsigned red = 255, green = 255, blue = 255;
    if (std::sscanf(hex.c_str(), "#%2x%2x%2x", &red, &green, &blue) != 3)
        return {};
    return {static_cast<std::uint8_t>(red), static_cast<std::uint8_t>(green), static_cast<std::uint8_t>(blue)};
}

}  // namespace riders::looking
