#include "standardfile/save_place.h"

#include <utility>

namespace toolbox {
namespace {

SavePlaceProc placeProc;

}  // namespace

const SavePlaceProc &standardfile::savePlace()
{
    return placeProc;
}

void setSavePlace(SavePlaceProc place)
{
    placeProc = std::move(place);
}

}  // namespace toolbox
