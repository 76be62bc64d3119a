// Which files a run may replace.
#pragma once

#include <filesystem>

namespace riders::film {

// Whether the file says that this program made it: TIFF, PDF and PostScript do, rasters for printers cannot.
bool isOwnFilm(const std::filesystem::path &file);

// Throws Refusal where something is there that is no film that this program made.
void refuseForeign(const std::filesystem::path &file);

}  // namespace riders::film
