// Which folder a file dialog opens in, and choosing one above it. Private to
// Standard File.
#pragma once

#include <filesystem>

#include "toolbox/types.h"

namespace toolbox::standardfile {

// The folder the next dialog opens in: the one used last in this session, else
// the configuration's, else the home folder; or the nearest above it that
// exists.
std::filesystem::path startingFolder();
void rememberFolder(const std::filesystem::path &folder);
// The folder, or the nearest one above it that exists.
std::filesystem::path nearestFolder(std::filesystem::path folder);
// Lets the user choose the folder or one above it, with the popup's top left
// at the global point; empty: none chosen.
std::filesystem::path chooseAbove(const std::filesystem::path &folder, Point where);

}  // namespace toolbox::standardfile
