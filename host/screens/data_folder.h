// Where the data that comes with the program is.
#pragma once

#include <filesystem>
#include <string>

namespace riders::screens {

// The folder of that name beside the program, as the build leaves it; or, where there is none, in the data folder of
// the prefix under which the program is installed. Need not be there.
std::filesystem::path dataFolder(const std::string &name);

}  // namespace riders::screens
