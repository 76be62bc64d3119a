// The colours a screen can show. Private to QuickDraw.
#pragma once

#include <cstdint>

namespace toolbox::quickdraw {

// What a screen of that depth shows for 0x00RRGGBB.
std::uint32_t shownColor(std::uint32_t rgb, int depth);
// What inverting makes of a shown color; twice is as before.
std::uint32_t oppositeColor(std::uint32_t shown, int depth);

}  // namespace toolbox::quickdraw
