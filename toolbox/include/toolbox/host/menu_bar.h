// The menu bar's height, for code that lays something out below it.
#pragma once

#include <cstdint>

namespace toolbox {

// In pixels, along the top of the main display, its line at the bottom included.
inline constexpr std::int16_t menuBarHeight = 20;

}  // namespace toolbox
