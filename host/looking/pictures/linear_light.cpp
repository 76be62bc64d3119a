#include "looking/pictures/linear_light.h"

#include <algorithm>
#include <cmath>

namespace riders::looking {
namespace {

// The curve of sRGB.
float lightOf(std::uint8_t value)
{
    const double share = value / 255.0;
    return static_cast<float>(share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4));
}

std::uint8_t valueOf(float light)
{
    const double share = std::clamp(static_cast<double>(light), 0.0, 1.0);
    const double value = share <= 0.0031308 ? share * 12.92 : 1.055 * std::pow(share, 1 / 2.4) - 0.055;
    return static_cast<std::uint8_t>(std::lround(value * 255));
}

}  // namespace

Light lightOf(Colour colour)
{
    return {lightOf(colour.red), lightOf(colour.green), lightOf(colour.blue)};
}

Colour colourOf(const Light &light)
{
    return {valueOf(light.red), valueOf(light.green), valueOf(light.blue)};
}

double luminance(const Light &light)
{
    return 0.2126 * light.red + 0.7152 * light.green + 0.0722 * light.blue;
}

}  // namespace riders::looking
