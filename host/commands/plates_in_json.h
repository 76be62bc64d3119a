// Screens of plates as JSON.
#pragma once

#include <string>
#include <vector>

#include "screens/plate_screen.h"

namespace riders::commands {

// The members of one plate's object: what is not chosen is left out.
std::vector<std::pair<std::string, std::string>> plateMembers(const screens::PlateScreen &plate);
std::string platesInJson(const std::vector<screens::PlateScreen> &plates);

}  // namespace riders::commands
