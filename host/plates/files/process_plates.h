// All process plates of a page in one file.
#pragma once

#include <filesystem>
#include <vector>

#include "plates/files/plate_files.h"

namespace riders::plates {

// Cyan, magenta, yellow and black from a PCX file of four bits a pixel, which should be
// about so large: the file keeps the lower 16 bits of its size only.
// Throws Refusal for a file that cannot be read or is no such picture; a row
// that is cut short is left out.
std::vector<BitPlate> readProcessPlates(const std::filesystem::path &pcx, int aboutWidth, int aboutHeight);

}  // namespace riders::plates
