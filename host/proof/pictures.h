// The pictures of a proof, for people.
#pragma once

#include <filesystem>
#include <vector>

#include "proof/inks.h"
#include "proof/plate_files.h"
#include "proof/tints.h"

namespace riders::proof {

struct Picture {
    int width = 0, height = 0;
    std::vector<Colour> pixels;  // rows from the top
};

// A loupe picture shows a square of this side ...
inline constexpr double kLoupeInches = 25 / 25.4;
// ... so many times as large.
inline constexpr double kLoupeTimes = 8;

struct InkedTints {
    const TintPlate *plate;
    Colour ink;
};
// The page in all its inks, a pixel for `step` x `step` of the plates'. The plates are of one size, one at least.
Picture pagePicture(const std::vector<InkedTints> &plates, int step);

struct InkedPlate {
    const BitPlate *plate;
    Colour ink;
};
// A place of the page through a loupe, all inks on each other; black on white
// is what a single film looks like. Above 2400 dpi several pixels are made one.
Picture loupePicture(const std::vector<InkedPlate> &plates, double dpi, const Place &place);

// Writes a PNG; `dpi` says how large it is meant to be. Throws Refusal.
void writePicture(const std::filesystem::path &file, const Picture &picture, double dpi);
// The resolution at which a loupe picture of plates of so many dpi is to be shown.
double loupePictureDpi(double plateDpi);

}  // namespace riders::proof
