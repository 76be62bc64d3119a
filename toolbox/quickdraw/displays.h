// The surfaces of all displays, and drawing that may extend over several.
// Private to QuickDraw.
#pragma once

#include "quickdraw/surface.h"

namespace toolbox::quickdraw {

// Makes surfaces for these displays; one whose place on the desktop and scale
// are unchanged keeps its pixels. True when anything differs from before.
bool setDisplays(const std::vector<Display> &displays);
void forgetDisplays();

std::vector<Surface> &surfaces();
// All that the displays cover.
Area desktopArea();

void fillOnDisplays(const Area &global, const Ink &ink);
// Moves the pixels of the area by (dh, dv); what leaves it is lost. Returns the
// part of the area that nothing was moved to.
Area scrollOnDisplays(const Area &global, int dh, int dv);

}  // namespace toolbox::quickdraw
