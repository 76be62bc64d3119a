// The surfaces of all screens, and drawing that may lie across them. Private
// to QuickDraw.
#pragma once

#include "quickdraw/surface.h"

namespace toolbox::quickdraw {

// Makes surfaces for these screens; one whose place on the desktop and scale
// are unchanged keeps its pixels. True when anything differs from before.
bool setScreens(const std::vector<Screen> &screens);
void forgetScreens();

std::vector<Surface> &surfaces();
// All that the screens cover.
Area desktopArea();

void fillOnScreens(const Area &global, const Ink &ink);
// Moves the pixels of the area by so much; what leaves it is lost. Returns the
// part of the area that nothing was moved to.
Area scrollOnScreens(const Area &global, int dh, int dv);

}  // namespace toolbox::quickdraw
