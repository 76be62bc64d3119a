// Pictures as PNG files.
#pragma once

#include <filesystem>

#include "looking/pictures/picture.h"

namespace riders::looking {

// `dpi` says how large it is meant to be. Throws Refusal.
void writePicture(const std::filesystem::path &file, const Picture &picture, double dpi);

}  // namespace riders::looking
