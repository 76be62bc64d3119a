// What `riders make` prints: one line of what is in the file.
#pragma once

#include <string>
#include <vector>

#include "make/request.h"
#include "screens/plate_screen.h"

namespace riders::commands {

// With a line end. The plates are those of chooseScreens.
std::string madeInWords(const make::MakeRequest &request, const std::vector<screens::PlateScreen> &plates);
// `explained` is JSON, or empty.
std::string madeInJson(const make::MakeRequest &request, const std::vector<screens::PlateScreen> &plates,
                       const std::string &explained = {});

}  // namespace riders::commands
