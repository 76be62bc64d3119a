// What a plate in 256 steps tells: its tints, and where to look closely.
#pragma once

#include <optional>
#include <vector>

#include "proof/plate_files.h"

namespace riders::proof {

// A rectangle in inches from the upper left corner of the sheet.
struct Place {
    double left = 0, top = 0, width = 0, height = 0;
    bool empty() const { return width <= 0 || height <= 0; }
};

struct TintRange {
    bool solid = false;          // there is full ink
    bool tint = false;           // there is ink that is not full
    double least = 0, most = 0;  // of those tints, 0 to 1; tints of less than a square millimetre do not count
};
TintRange tintRange(const TintPlate &plate, double dpi);

// The best even tint to measure a screen on: large, and not too light or dark;
// 1.5 inches a side at most, which is exact enough here, and a little away from its edges. Empty where no
// tint is as large as a tenth of an inch.
Place evenTint(const TintPlate &plate, double dpi);

// Where a square of `side` inches (less on a smaller page) shows most of the
// dots of these plates together; for plates without tints, most of their ink.
Place tellingPlace(const std::vector<const TintPlate *> &plates, double dpi, double side);
// How much of a place shows dots, 0 to 1.
double tellingShare(const TintPlate &plate, double dpi, const Place &place);

}  // namespace riders::proof
