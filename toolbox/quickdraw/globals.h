// How QuickDraw's parts start and stop, and the current port. Private to
// QuickDraw.
#pragma once

#include "quickdraw/area.h"
#include "toolbox/quickdraw.h"

namespace toolbox::quickdraw {

void startDesktopPort();
void stopDesktopPort();
// Makes the desktop's port cover what the screens cover.
void fitDesktopPort(const Area &desktop);

void startDevices();
void stopDevices();

// The port that drawing goes to; the desktop's when none is set.
GrafPort &currentPort();

// Polygons.
bool polygonOpen();
void addToPolygon(Point from, Point to);
void forgetPolygon();

}  // namespace toolbox::quickdraw
