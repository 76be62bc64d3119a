#include "standardfile/save_place.h"

#include <utility>

namespace toolbox {
namespace {

SavePlaceProc placeProc;
std::filesystem::path proposed;

}  // namespace

const SavePlaceProc &standardfile::savePlace()
{
    return placeProc;
}

const std::filesystem::path &standardfile::proposedFile()
{
    return proposed;
}

void proposeToSave(const std::filesystem::path &file)
{
    proposed = file;
}

void setSavePlace(SavePlaceProc place)
{
    placeProc = std::move(place);
}

}  // namespace toolbox
