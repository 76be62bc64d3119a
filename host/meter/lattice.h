// The two waves that make a screen's cells, or the one that makes its lines.
#pragma once

#include <cmath>
#include <cstdint>

#include "meter/bit_page.h"
#include "meter/wave.h"

namespace riders::meter {

// Position (x, y) on the page lies in the cell at across.x * x + across.y * y
// and down.x * x + down.y * y; only the fractions of these count. Lines: across
// is zero.
struct Lattice {
    Wave across, down;

    bool lines() const { return across.x == 0 && across.y == 0; }
};

inline double length(const Wave &wave)
{
    return std::hypot(wave.x, wave.y);
}
// A quarter turn clockwise on the sheet.
inline Wave turned(const Wave &wave)
{
    return {-wave.y, wave.x};
}
// How far into the wave's period a place lies, 2^32 for a whole period.
inline std::uint32_t phaseAt(const Wave &wave, double x, double y)
{
    const double periods = wave.x * x + wave.y * y;
    return std::uint32_t(std::int64_t((periods - std::floor(periods)) * 4294967296.0));
}
inline std::uint32_t phaseStep(double periods)
{
    return std::uint32_t(std::int64_t(std::lround(periods * 4294967296.0)));
}

}  // namespace riders::meter
