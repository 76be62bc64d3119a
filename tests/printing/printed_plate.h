// What a printer was sent beside the film that it should print.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "plates/files/plate.h"
#include "printing/escp2_droplets.h"
#include "screening/tile.h"

namespace printing_tests {

using riders::plates::BitPlate;

BitPlate readFilm(const std::filesystem::path &tiff);
// PBM, with 8 pixels in a byte.
BitPlate readBitmap(const std::string &bytes);
// All pages of PWG raster.
std::vector<BitPlate> readPwg(const std::filesystem::path &file);
// Droplets as pixels of that resolution, so large that all are on it. Throws std::runtime_error where one lies
// beside the pixels, or two on the same.
BitPlate pixelsOf(const escp2::Page &page, const riders::screening::Resolution &dpi);

// Where there is ink.
struct Ink {
    int left = 0, top = 0, right = -1, bottom = -1;  // with the last

    int columns() const { return right - left + 1; }
    int rows() const { return bottom - top + 1; }
};
Ink inkOf(const BitPlate &plate);
// The ink of both is laid on each other; -1 where it is not of the same size, or there is none.
long differentPixels(const BitPlate &one, const BitPlate &other);

}  // namespace printing_tests
