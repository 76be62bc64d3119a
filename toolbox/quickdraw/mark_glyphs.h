// The marks that menus use and text fonts lack: 0x11 the Command key, 0x12 a
// check mark, 0x13 a diamond, 0x14 an apple. Private to QuickDraw.
#pragma once

#include "quickdraw/surface.h"

namespace toolbox::quickdraw {

bool isMark(std::uint8_t character);
int markAdvance(int size);
// At any size in device pixels; at 12 without grades.
GlyphImage markImage(std::uint8_t character, int deviceSize);

}  // namespace toolbox::quickdraw
