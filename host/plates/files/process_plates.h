// All process plates of a page in one file.
#pragma once

#include <filesystem>
#include <vector>

#include "plates/files/plate.h"

namespace riders::plates {

// Cyan, magenta, yellow and black from a file of four bits a pixel, cyan the highest, and nothing else; rows begin
// with a byte. Throws Refusal for a file that cannot be read or does not hold exactly a page of that size.
std::vector<BitPlate> readProcessPlates(const std::filesystem::path &file, int columns, int rows);

// The black one alone.
BitPlate readBlackPlate(const std::filesystem::path &file, int columns, int rows);

}  // namespace riders::plates
