#include "film/flat_places.h"

#include <utility>

#include "plates/measuring/flat_tint.h"

namespace riders::film {
namespace {

class FlatLook : public plates::PlateLook {
public:
    FlatLook(int columns, double dpi) : tint_(columns, dpi) {}
    void row(const std::uint8_t *tints) override { tint_.row(tints); }
    plates::Place place() const { return tint_.place(); }

private:
    plates::FlatTint tint_;
};

}  // namespace

std::unique_ptr<plates::PlateLook> FlatPlaces::look(int columns, double dpi)
{
    return std::make_unique<FlatLook>(columns, dpi);
}

void FlatPlaces::take(int page, const plates::PlateLooks &looks)
{
    std::vector<plates::Place> places;
    for (const auto &look : looks)
        places.push_back(dynamic_cast<const FlatLook &>(*look).place());
    const std::lock_guard lock(mutex_);
    places_[page] = std::move(places);
}

}  // namespace riders::film
