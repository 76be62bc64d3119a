// The menus that are installed. Private to the Menu Manager.
#pragma once

#include <vector>

#include "toolbox/menus.h"

namespace toolbox::menus {

// Those in the bar, from left to right.
std::vector<MenuHandle> menusInBar();
// Empties the list; the menus themselves belong to whoever made them.
void forgetMenus();

}  // namespace toolbox::menus
