// The pattern that plates make where they print over each other.
#pragma once

#include <vector>

#include "looking/pictures/pictures.h"
#include "plates/measuring/place.h"

namespace riders::looking {

inline constexpr int kPatternPixels = 900;  // along the longer side, at most
// The place in the plates' inks over each other, averaged as light is. `cell` is the side of a screen's cell in
// inches: where cells would be smaller than kPixelsACell, so that a picture of them could have a pattern of its
// own, they are blurred until only what is coarser is left, as seen from afar.
inline constexpr double kPixelsACell = 6;
Picture patternPicture(const std::vector<InkedPlate> &plates, double dpi, const plates::Place &place, double cell);
// Whether its dots are not blurred.
bool showsDots(const plates::Place &place, double cell);

}  // namespace riders::looking
