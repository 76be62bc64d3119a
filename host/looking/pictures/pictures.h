// The pictures of a proof: a page in its inks, and dots through a loupe.
#pragma once

#include <vector>

#include "looking/pictures/picture.h"
#include "plates/files/plate.h"
#include "plates/measuring/place.h"

namespace riders::looking {

// A loupe picture shows a square of this side ...
inline constexpr double kLoupeInches = 25 / 25.4;
// ... enlarged this many times.
inline constexpr double kLoupeTimes = 8;

struct InkedTints {
    const plates::TintPlate *plate;
    Colour ink;
};
// The page in all its inks, one pixel for `step` x `step` of the plates'. At least one plate; all of one size.
Picture pagePicture(const std::vector<InkedTints> &plates, int step);

struct InkedPlate {
    const plates::BitPlate *plate;
    Colour ink;
};
// A place of the page through a loupe, all inks over each other; black on white
// is what a single film looks like. Above 2400 dpi several pixels are merged into one.
Picture loupePicture(const std::vector<InkedPlate> &plates, double dpi, const plates::Place &place);

// The resolution at which a loupe picture of plates of that resolution is to be shown.
double loupePictureDpi(double plateDpi);

}  // namespace riders::looking
