// The menu bar's place, for what lays something out below it.
#pragma once

#include <cstdint>

namespace toolbox {

// In pixels, along the top of the main display, its line at the bottom included.
inline constexpr std::int16_t menuBarHeight = 20;

}  // namespace toolbox
