// The colours a display can show. Private to QuickDraw.
//
// 1 bit per pixel: white and black. 2: four greys. 4: the sixteen usual colours.
// 8: a cube of six levels per component, and ramps of red, green, blue and grey
// between them. 32: all.
#pragma once

#include <cstdint>
#include <vector>

namespace toolbox::quickdraw {

// 0x00RRGGBB, white first and black last; empty where all colours are shown.
const std::vector<std::uint32_t> &colorsOf(int depth);

// What a display of that depth shows for a color: the nearest that it has, to
// within the 32nd part of each component's range that a table distinguishes; at
// 1 bit white from half the brightness on.
std::uint32_t shownColor(std::uint32_t rgb, int depth);

// What inverting turns a shown color into; inverting twice restores it. Greys
// and the colours of the cube become their complement, the other colours of a
// table another one that is far away; at 4 bits the middle grey, which is its
// own complement, and brown stay as they are.
std::uint32_t oppositeColor(std::uint32_t shown, int depth);
// Whether that is the complement for all colours of the depth.
bool oppositesAreComplements(int depth);

// Whether the display has what lies between the two, so that an edge may be
// graded.
bool canGrade(std::uint32_t one, std::uint32_t other, int depth);

}  // namespace toolbox::quickdraw
