// Removing a folder with everything in it.
#pragma once

#include <filesystem>

namespace riders::io {

// A file or folder, with everything in it; links in it are not followed. Tries again what fails, since a fault may
// pass; what cannot be removed stays. Needs no memory of its own, so that destructors may call it.
void removeTree(const std::filesystem::path &path) noexcept;

}  // namespace riders::io
