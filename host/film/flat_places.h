// Where on each page the screens of its plates can be measured: found while the job is surveyed.
#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <vector>

#include "plates/measuring/place.h"
#include "plates/survey/survey.h"

namespace riders::film {

class FlatPlaces {
public:
    // For plates surveyed at that resolution.
    static std::unique_ptr<plates::PlateLook> look(int columns, double dpi);
    // Looks that were made so; from any thread.
    void take(int page, const plates::PlateLooks &looks);
    // A flat tint of the plate, by its index on the surveyed page, on the upright page; empty where there is none.
    // Once all pages are taken.
    const plates::Place &of(int page, std::size_t plate) const { return places_.at(page).at(plate); }

private:
    std::mutex mutex_;
    std::map<int, std::vector<plates::Place>> places_;
};

}  // namespace riders::film
