// Where on a page plates print over each other.
#pragma once

#include <cstdint>
#include <vector>

#include "plates/files/plate.h"
#include "plates/measuring/place.h"

namespace riders::looking {

// How much ink there is in each small square of a plate, a twentieth of an inch a side or about that.
struct InkBlocks {
    int across = 0, down = 0;
    double inches = 0;                     // a square's side
    double pageWidth = 0, pageHeight = 0;  // in inches
    std::vector<std::uint8_t> ink = {};    // 255 is solid; rows from the top
};
InkBlocks inkBlocks(const plates::TintPlate &plate, double dpi);

// How much of the page, in square inches, has tints of all these plates over each other; middle tints count in
// full. At least one plate, all of one page.
double sharedArea(const std::vector<const InkBlocks *> &plates);

// The square of `side` inches (less on a smaller page) with most of that.
plates::Place sharedPlace(const std::vector<const InkBlocks *> &plates, double side);

}  // namespace riders::looking
