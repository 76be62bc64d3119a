#include "quickdraw/palette.h"

#include <algorithm>
#include <array>

namespace toolbox::quickdraw {
namespace {

using Colors = std::vector<std::uint32_t>;
constexpr std::uint32_t white = 0xFFFFFF;

int component(std::uint32_t rgb, int shift)
{
    return static_cast<int>(rgb >> shift & 0xFF);
}

int distance(std::uint32_t a, std::uint32_t b)
{
    int sum = 0;
    for (int shift : {0, 8, 16}) {
        const int apart = component(a, shift) - component(b, shift);
        sum += apart * apart;
    }
    return sum;
}

// Colours and, for each, the position of the one that inverting turns it into.
// Five bits of each component make a cell; no two colours of a table share one.
class Palette {
public:
    Palette(Colors colors, std::vector<int> opposites)
        : colors_(std::move(colors)), opposites_(std::move(opposites))
    {
        cells_.fill(unknown);
    }
    const Colors &colors() const { return colors_; }
    std::uint32_t nearest(std::uint32_t rgb) { return colors_[position(rgb)]; }
    std::uint32_t opposite(std::uint32_t rgb) { return colors_[opposites_[position(rgb)]]; }

private:
    static constexpr std::int16_t unknown = -1;

    std::size_t position(std::uint32_t rgb)
    {
        std::int16_t &cell = cells_[(rgb >> 9 & 0x7C00) | (rgb >> 6 & 0x3E0) | (rgb >> 3 & 0x1F)];
        if (cell == unknown)
            cell = search((rgb & 0xF8F8F8) | 0x040404);
        return static_cast<std::size_t>(cell);
    }
    std::int16_t search(std::uint32_t middle) const
    {
        auto nearer = [&](std::uint32_t a, std::uint32_t b) { return distance(a, middle) < distance(b, middle); };
        return static_cast<std::int16_t>(std::min_element(colors_.begin(), colors_.end(), nearer) -
                                         colors_.begin());
    }

    Colors colors_;
    std::vector<int> opposites_;
    std::array<std::int16_t, 1 << 15> cells_;
};

Palette twoBits()
{
    return {{white, 0xAAAAAA, 0x555555, 0}, {3, 2, 1, 0}};
}

Palette fourBits()
{
    enum {
        whitest,
        yellow,
        orange,
        red,
        magenta,
        purple,
        blue,
        cyan,
        green,
        darkGreen,
        brown,
        tan,
        light,
        middle,
        dark,
        blackest
    };
    return {{white, 0xFCF305, 0xFF6402, 0xDD0806, 0xF20884, 0x4600A5, 0x0000D4, 0x02ABEA, 0x1FB714, 0x006411,
             0x562C05, 0x90713A, 0xC0C0C0, 0x808080, 0x404040, 0},
            {blackest, blue, purple, cyan, green, orange, yellow, red, magenta, tan, brown, darkGreen, dark,
             middle, light, whitest}};
}

constexpr int levels = 6, levelStep = 0x33, cubeSize = levels * levels * levels;
constexpr int rampSteps[] = {0xEE, 0xDD, 0xBB, 0xAA, 0x88, 0x77, 0x55, 0x44, 0x22, 0x11};
constexpr int rampSize = 10;

// White first; black, the last of the cube, is at the end of the table.
Palette eightBits()
{
    Colors colors;
    std::vector<int> opposites;
    constexpr int last = cubeSize - 1 + 4 * rampSize;
    for (int i = 0; i < cubeSize - 1; ++i) {
        auto level = [](int step) { return static_cast<std::uint32_t>(0xFF - step % levels * levelStep); };
        colors.push_back(level(i / 36) << 16 | level(i / 6) << 8 | level(i));
        opposites.push_back(i == 0 ? last : cubeSize - 1 - i);
    }
    for (std::uint32_t ramp : {0x010000u, 0x000100u, 0x000001u, 0x010101u})
        for (int i = 0; i < rampSize; ++i) {
            const int first = static_cast<int>(colors.size()) - i;
            colors.push_back(ramp * static_cast<std::uint32_t>(rampSteps[i]));
            opposites.push_back(first + (ramp == 0x010101u ? rampSize - 1 - i : (i + rampSize / 2) % rampSize));
        }
    colors.push_back(0);
    opposites.push_back(0);
    return {std::move(colors), std::move(opposites)};
}

// Nothing where every colour is shown, and on 1 bit, which needs no search.
Palette *paletteOf(int depth)
{
    static Palette two = twoBits(), four = fourBits(), eight = eightBits();
    switch (depth) {
    case 2:
        return &two;
    case 4:
        return &four;
    case 8:
        return &eight;
    default:
        return nullptr;
    }
}

std::uint32_t blackOrWhite(std::uint32_t rgb)
{
    constexpr int halfWay = 128 * 100;
    return 30 * component(rgb, 16) + 59 * component(rgb, 8) + 11 * component(rgb, 0) < halfWay ? 0 : white;
}

bool isGray(std::uint32_t rgb)
{
    return (rgb & 0xFF) * 0x010101 == rgb;
}

}  // namespace

const std::vector<std::uint32_t> &colorsOf(int depth)
{
    static const Colors one{white, 0}, all{};
    const Palette *palette = paletteOf(depth);
    return palette ? palette->colors() : depth == 1 ? one : all;
}

std::uint32_t shownColor(std::uint32_t rgb, int depth)
{
    if (depth == 1)
        return blackOrWhite(rgb);
    Palette *palette = paletteOf(depth);
    return palette ? palette->nearest(rgb) : rgb;
}

std::uint32_t oppositeColor(std::uint32_t shown, int depth)
{
    Palette *palette = paletteOf(depth);
    return palette ? palette->opposite(shown) : shown ^ white;
}

bool oppositesAreComplements(int depth)
{
    return depth <= 2 || depth > 8;
}

bool canGrade(std::uint32_t one, std::uint32_t other, int depth)
{
    return depth >= 8 || (depth > 1 && isGray(one) && isGray(other));
}

}  // namespace toolbox::quickdraw
