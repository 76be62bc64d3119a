// What inks look like on white paper.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace riders::looking {

struct Colour {
    std::uint8_t red = 255, green = 255, blue = 255;

    bool operator==(const Colour &) const = default;
};

// The colour of a plate's ink: the process inks by name, a spot ink by its
// parts of cyan, magenta, yellow and black where they are known, else a grey blue.
Colour inkColour(const std::string &plate, const std::map<std::string, std::array<double, 4>> &spotInks);

// Two inks over each other: each lets through its share of the light.
inline Colour multiply(Colour one, Colour other)
{
    const auto part = [](int a, int b) { return static_cast<std::uint8_t>((a * b + 127) / 255); };
    return {part(one.red, other.red), part(one.green, other.green), part(one.blue, other.blue)};
}
// A tint of an ink on white; 255 is solid.
inline Colour tintOf(Colour ink, int tint)
{
    const auto part = [tint](int a) { return static_cast<std::uint8_t>(255 - ((255 - a) * tint + 127) / 255); };
    return {part(ink.red), part(ink.green), part(ink.blue)};
}

std::string hexColour(Colour colour);  // #rrggbb
// White where it is not such a text.
Colour colourFrom(const std::string &hex);

}  // namespace riders::looking
