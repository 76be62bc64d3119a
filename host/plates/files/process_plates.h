// All process plates of a page in one file.
#pragma once

#include <filesystem>
#include <vector>

#include "plates/files/plate_files.h"

namespace riders::plates {

// Cyan, magenta, yellow and black from a PCX file of four bits per pixel, which should be
// about this large, in pixels: the file keeps only the lower 16 bits of its size.
// Throws Refusal for a file that cannot be read or is not such a picture; a row
// that is cut short is left out.
std::vector<BitPlate> readProcessPlates(const std::filesystem::path &pcx, int aboutWidth, int aboutHeight);

}  // namespace riders::plates
