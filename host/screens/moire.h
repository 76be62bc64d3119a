// The patterns that grids make with each other. docs/screens.md has the rules, their sources and figures worked by
// hand.
//
// Grids that are printed over each other multiply, so their waves add: k waves of one axis and l of the other, of
// each grid, with any signs, are a wave of the whole. Where the sum nearly vanishes, it is a coarse pattern.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "screens/grid.h"

namespace riders::screens {

// How many waves of each axis of a grid; y is 0 for lines.
struct Order {
    int x = 0, y = 0;

    bool operator==(const Order &) const = default;
};

// The period, in cells, of the pattern that is in every rosette: that of two equal screens 30 degrees apart.
inline constexpr double kRosettePeriod = 1.9318516525781366;  // 1 / (2 sin 15°)
// A pattern that shows so much more than the rosette's own can be seen. It lets pass what cannot be helped: four
// plates spread evenly over the quarter turn are 22.5 degrees apart, which is 1.33.
inline constexpr double kCanBeSeen = 1.35;

struct Pattern {
    std::vector<std::size_t> grids;  // two or three, as they were given, in ascending order
    std::vector<Order> orders;       // of each of these
    double frequency = 0;            // periods per inch
    // Contrast, where each grid has the tint that shows it most: 1 is that of two equal screens of dots.
    double strength = 0;
    // Strength times period, as a multiple of that of the rosette's own pattern at the same frequency.
    double showing = 0;
    bool light = false;  // one of the inks is light

    double millimetres() const { return kMillimetresPerInch / frequency; }
    bool canBeSeen() const { return showing > kCanBeSeen; }
};

// Of all patterns of two or three grids together, that which shows most. None where all that might are so slow
// that the grids' exactness does not tell them from none: then they shift the colour of the whole, and are no
// pattern.
std::optional<Pattern> patternBetween(const std::vector<Grid> &grids);
// The one with the longest period instead, of those with a contrast of 1 % or more.
std::optional<Pattern> coarsestBetween(const std::vector<Grid> &grids);

// The same for each two screens, and for each three if there are no more than kMostInThrees; those that show most
// first. `grids` are places in `screens`.
inline constexpr std::size_t kMostInThrees = 8;
std::vector<Pattern> patternsOf(const std::vector<NamedScreen> &screens);

// Whether the two are one grid, as exactly as can be said: where one lies on the other decides on the colour of
// all of the page.
bool shareGrid(const Grid &one, const Grid &other);

}  // namespace riders::screens
