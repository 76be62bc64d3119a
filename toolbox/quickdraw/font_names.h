// Names of the fonts that are installed. For font menus.
#pragma once

#include <string>
#include <vector>

namespace toolbox::quickdraw {

// Family names, Mac OS Roman, sorted, each once.
const std::vector<std::string> &fontFamilies();

}  // namespace toolbox::quickdraw
