// From points to the pixels of a film, which need not be square.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "film/drawing/drawing.h"
#include "screening/tile.h"

namespace riders::film {

class FilmPoints {
public:
    explicit FilmPoints(const screening::Resolution &resolution) : resolution_(resolution) {}

    std::int64_t across(double points) const { return std::llround(points * resolution_.across / 72); }
    std::int64_t down(double points) const { return std::llround(points * resolution_.down / 72); }

    // How thick a line is, at least a pixel: the same in points for lines of both directions, as far as the pixels
    // let it. The larger pixels decide.
    struct Thickness {
        std::int64_t across, down;
    };
    Thickness thickness(double points) const
    {
        const double coarser = std::min(resolution_.across, resolution_.down);
        const double length = std::max(1.0, std::round(points * coarser / 72)) / coarser;
        return {std::llround(length * resolution_.across), std::llround(length * resolution_.down)};
    }

private:
    screening::Resolution resolution_;
};

}  // namespace riders::film
