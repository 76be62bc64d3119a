// The current port, and the desktop's, which is current when no other is.
// Private to QuickDraw.
#pragma once

#include "quickdraw/area.h"
#include "toolbox/quickdraw.h"

namespace toolbox::quickdraw {

// The port that drawing goes to; the desktop's when none is set.
GrafPort &currentPort();

void startDesktopPort();
void stopDesktopPort();
// Makes the desktop's port cover what the displays cover.
void fitDesktopPort(const Area &desktop);

}  // namespace toolbox::quickdraw
