// The menu bar, for hosts: its height, for code that lays something out below it, and its menus by keys.
#pragma once

#include <cstdint>
#include <optional>

#include "toolbox/events.h"

namespace toolbox {

// In pixels, along the top of the main display, its line at the bottom included.
inline constexpr std::int16_t menuBarHeight = 20;

// Opens a menu of the bar for a keyDown of F10 (the first menu), or of a letter with Option (the first title that
// begins with it), and returns what MenuSelect does; the arrow keys go from menu to menu and from item to item.
// Nothing for any other event. Between start and stop of the Toolbox; allocates.
std::optional<std::int32_t> menuSelectByKey(const EventRecord &event);

}  // namespace toolbox
