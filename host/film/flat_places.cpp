#include "film/flat_places.h"

#include <utility>

#include "plates/measuring/flat_tint.h"

namespace riders::film {

void FlatPlaces::take(const plates::PageInTints &seen)
{
    std::vector<plates::Place> places;
    for (const plates::TintPlate &plate : seen.plates)
        places.push_back(plates::flatTint(plate, seen.dpi));
    const std::lock_guard lock(mutex_);
    places_[seen.page.number] = std::move(places);
}

}  // namespace riders::film
