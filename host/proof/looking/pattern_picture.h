// Where plates print over each other, and what pattern they make there.
#pragma once

#include <vector>

#include "plates/measuring/place.h"
#include "proof/looking/pictures.h"

namespace riders::proof {

// How much of the page, in square inches, has tints of all these plates over each other; middle tints count in
// full.
double sharedArea(const std::vector<const plates::BitPlate *> &plates, double dpi);

// The square of `side` inches (less on a smaller page) with most of that.
plates::Place sharedPlace(const std::vector<const plates::BitPlate *> &plates, double dpi, double side);

inline constexpr int kPatternPixels = 900;  // along the longer side, at most
// The place in the plates' inks over each other, averaged as light is. `cell` is the side of a screen's cell in
// inches: where cells would be smaller than kPixelsACell, so that a picture of them could have a pattern of its
// own, they are blurred until only what is coarser is left, as seen from afar.
inline constexpr double kPixelsACell = 6;
Picture patternPicture(const std::vector<InkedPlate> &plates, double dpi, const plates::Place &place, double cell);
// Whether its dots are not blurred.
bool showsDots(const plates::Place &place, double cell);

}  // namespace riders::proof
