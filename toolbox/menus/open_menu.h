// The menu that is open now, for those who have to find its items on the
// screen without eyes.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "toolbox/menus.h"

namespace toolbox::menus {

struct OpenMenu {
    MenuHandle menu;
    std::int16_t id;
    // Global, item 1 first; the part that can be seen and pressed, empty for an
    // item scrolled away.
    std::vector<Rect> items;
};

// Nothing while no menu is open.
const std::optional<OpenMenu> &openMenu();
void forgetOpenMenu();

}  // namespace toolbox::menus
