// The files in which the interpreter writes the plates of a page, with one or more inks in each.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "plates/files/plate.h"

namespace riders::plates {

// From then on the library that reads pictures keeps its words to itself: the Refusals say enough.
void silencePictures();

// Throws the Refusal of a file that is not as the interpreter should write it.
[[noreturn]] void refusePicture(const std::filesystem::path &file);

// All throw Refusal for a file that cannot be read or is not as it should be.
TintPlate readTints(const std::filesystem::path &tiff);
struct PlateSize {
    int width = 0, height = 0;
};
// The same row by row, from the top down: a plate may be larger than memory.
PlateSize readTintRows(const std::filesystem::path &tiff,
                       const std::function<void(const std::uint8_t *tints, const PlateSize &size)> &take);
BitPlate readPlate(const std::filesystem::path &tiff);
// The four process inks that all inks of a page, spot inks too, add up to.
std::vector<TintPlate> readComposite(const std::filesystem::path &tiff);

struct PlateFile {
    std::string plate;  // as the interpreter writes it: %25 for a per cent sign and so on
    std::filesystem::path file;
};
// The interpreter's files of one page, "7(Cyan).tif": the process plates in their
// order, then the others by name.
std::vector<PlateFile> plateFiles(const std::filesystem::path &folder, int page);

}  // namespace riders::plates
