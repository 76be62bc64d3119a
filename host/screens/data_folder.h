// Where the data that comes with the program is.
#pragma once

#include <filesystem>
#include <string>

namespace riders::screens {

// The folder of that name beside the program, or in ../share/riders from where the program is when that is there
// instead. Need not be there.
std::filesystem::path dataFolder(const std::string &name);

}  // namespace riders::screens
