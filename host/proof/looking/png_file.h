// Pictures as PNG files.
#pragma once

#include <filesystem>

#include "proof/looking/picture.h"

namespace riders::proof {

// `dpi` says how large it is meant to be. Throws Refusal.
void writePicture(const std::filesystem::path &file, const Picture &picture, double dpi);

}  // namespace riders::proof
