// What the menus of the plug-in's dialogs offer.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace riders::make {

// By their numbers.
enum class Offered { fonts = 16134, sizes = 16135, frequencies = 16136, angles = 16137, flatnesses = 16139 };

// The values of that menu, in its order, without units. Starts and stops the Toolbox. Throws what the plug-in's
// resource fork is refused with.
std::vector<std::string> offersOf(Offered menu, const std::filesystem::path &plugin);

}  // namespace riders::make
