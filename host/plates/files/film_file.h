// A plate as film recorders take it.
#pragma once

#include <filesystem>

#include "plates/files/plate.h"

namespace riders::plates {

// Writes TIFF, CCITT group 4, white is 0. Throws Refusal.
void writeFilm(const std::filesystem::path &file, const BitPlate &plate, double dpi);

}  // namespace riders::plates
