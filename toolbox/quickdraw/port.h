// Ports for the managers that own windows. Private to the Toolbox.
#pragma once

#include "toolbox/quickdraw.h"

namespace toolbox::quickdraw {

// Makes a port of the record, whatever it held: portRect and visRgn the main
// display, local coordinates the global ones, clip wide open, pen, pattern,
// text and colours as new. Its two regions are allocated and belong to it;
// where the heap has no room they are nil and nothing will be drawn. The
// current port stays what it is.
void openPort(GrafPtr port);
// Frees the regions. When the port is the current one, the desktop's becomes
// current. The record is the caller's.
void closePort(GrafPtr port);

// Gives the port a drawing area of that size whose top left lies at the global
// point; the local coordinates of its top left are kept. Regions are the
// caller's to set.
void placePort(GrafPtr port, Point globalTopLeft, int16_t width, int16_t height);

// A colour that is none of the eight, for ForeColor and BackColor: as colour
// tables ask for. On a display of one bit a pixel it is black or white, whichever
// is nearer.
constexpr int32_t directColorFlag = 0x40000000;
constexpr int32_t directColor(uint8_t red, uint8_t green, uint8_t blue)
{
    return directColorFlag | red << 16 | green << 8 | blue;
}

// All displays in global coordinates, clipped by nothing: window frames and
// menus are drawn here.
GrafPtr desktopPort();

}  // namespace toolbox::quickdraw
