// The colours a display can show. Private to QuickDraw.
//
// 1 bit a pixel: white and black. 2: four greys. 4: the sixteen customary
// colours. 8: a cube of six levels a component, and ramps of red, green, blue
// and grey between them. 32: all.
#pragma once

#include <cstdint>
#include <vector>

namespace toolbox::quickdraw {

// 0x00RRGGBB, white first and black last; empty where all colours are shown.
const std::vector<std::uint32_t> &colorsOf(int depth);

// What a display of that depth shows for a color: the nearest that it has, to
// within the eighth of a component's range that a table is divided into; on 1
// bit white from half the brightness on.
std::uint32_t shownColor(std::uint32_t rgb, int depth);

// What inverting makes of a shown color; twice is as before. Greys and the
// colours of the cube become their complement, the other colours of a table
// another one that is far away; of 4 bits the middle grey, whose complement it is
// itself, and brown stay as they are.
std::uint32_t oppositeColor(std::uint32_t shown, int depth);
// Whether that is the complement for all colours of the depth.
bool oppositesAreComplements(int depth);

// Whether the display has what lies between the two, so that an edge may be
// graded.
bool canGrade(std::uint32_t one, std::uint32_t other, int depth);

}  // namespace toolbox::quickdraw
