// Threshold tables for the screens of a job's plates, each made once.
#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <tuple>

#include "film/dot_shapes.h"
#include "film/screen_choice.h"
#include "screening/thresholds.h"

namespace riders::film {

struct PlateScreening {
    screening::Thresholds thresholds;
    double frequency = 0, angle = 0;  // that of the tile, on the upright page
};

// May be asked from any thread.
class PlateScreens {
public:
    // Pages lie on the film turned anticlockwise by so many degrees.
    PlateScreens(const screening::Resolution &resolution, int rotation)
        : resolution_(resolution), rotation_(rotation)
    {
    }

    // Throws Refusal where the resolution allows no such screen, or the dot shape is none.
    std::shared_ptr<const PlateScreening> of(const PlateDots &dots);

private:
    using Key = std::tuple<double, double, std::string, std::string>;
    struct Entry {
        std::mutex mutex;
        std::shared_ptr<const PlateScreening> screening;
    };

    std::shared_ptr<const PlateScreening> make(const PlateDots &dots);

    const screening::Resolution resolution_;
    const int rotation_;
    std::mutex mutex_;
    std::map<Key, Entry> made_;
};

}  // namespace riders::film
