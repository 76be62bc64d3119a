// Grids that lie on each other: screens, and the threads of a printing mesh.
#pragma once

#include <cmath>
#include <string>

namespace riders::screens {

inline constexpr double kMillimetresPerInch = 25.4;

enum class GridKind { dots, lines, threads };

struct Grid {
    double frequency = 0;  // lines or threads per inch, above 0
    // Degrees, as setscreen takes them. Dots and threads: a quarter turn more looks the same. Lines: the direction
    // in which they run, half a turn more looks the same.
    double angle = 0;
    GridKind kind = GridKind::dots;
    // How far its waves may be from these, as a share of the frequency: by how much devices and measurements are
    // off.
    double exactness = 0.001;
};

struct NamedScreen {
    std::string name;
    Grid grid;
    bool light = false;   // patterns with this ink hardly show, as with yellow
    bool movable = true;  // another frequency or angle may be proposed
};

// Degrees between two directions of a grid, at most half of the turn after which it looks the same.
inline double degreesApart(GridKind kind, double one, double other)
{
    return std::abs(std::remainder(one - other, kind == GridKind::lines ? 180 : 90));
}

}  // namespace riders::screens
