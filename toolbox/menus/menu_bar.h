// The menu bar: where the titles of its menus are. Private to the Toolbox.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "toolbox/menus.h"

namespace toolbox::menus {

struct Title {
    MenuHandle menu;
    std::int16_t id;
    Rect place;       // global; the titles touch each other
    int menuLeft;     // of the rows of the menu that hangs from it
};

// From left to right.
std::vector<Title> titles();
std::optional<Title> titleAt(Point where);

void startMenuBar();
void stopMenuBar();

}  // namespace toolbox::menus
