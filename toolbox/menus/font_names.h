// Names of the fonts that are installed. Private to the Menu Manager.
#pragma once

#include <string>
#include <vector>

namespace toolbox::menus {

// Family names, Mac OS Roman, sorted, each once.
const std::vector<std::string> &fontFamilies();

}  // namespace toolbox::menus
