// Ports for the managers that own windows. Private to the Toolbox.
#pragma once

#include "toolbox/quickdraw.h"

namespace toolbox::quickdraw {

// Makes the record a port, whatever it held: portRect and visRgn the main
// display, local coordinates the global ones, clip wide open, pen, pattern, text
// and colours at their defaults. Its two regions are allocated and belong to it;
// where the heap has no room they are nil and nothing will be drawn. The current
// port does not change.
void openPort(GrafPtr port);
// Frees the regions. When the port is the current one, the desktop's becomes
// current. The record belongs to the caller.
void closePort(GrafPtr port);

// Gives the port a drawing area of that size whose top left lies at the global
// point; the local coordinates of its top left are kept. The regions are for the
// caller to set.
void placePort(GrafPtr port, Point globalTopLeft, int16_t width, int16_t height);

// A colour other than the eight, for ForeColor and BackColor: as colour tables
// ask for. On a display of one bit per pixel it is black or white, whichever is
// nearer.
constexpr int32_t directColorFlag = 0x40000000;
constexpr int32_t directColor(uint8_t red, uint8_t green, uint8_t blue)
{
    return directColorFlag | red << 16 | green << 8 | blue;
}

// All displays in global coordinates, unclipped: window frames and menus are
// drawn here.
GrafPtr desktopPort();

}  // namespace toolbox::quickdraw
