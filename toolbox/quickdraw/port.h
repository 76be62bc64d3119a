// Ports for the managers that own windows. Private to the Toolbox.
#pragma once

#include "toolbox/quickdraw.h"

namespace toolbox::quickdraw {

// Makes a port of the record, whatever it held: portRect and visRgn the main
// screen, local coordinates the global ones, clip wide open, pen, pattern,
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

// All screens in global coordinates, clipped by nothing: window frames and
// menus are drawn here.
GrafPtr desktopPort();

// The current port for the length of a block.
class PortInUse {
public:
    explicit PortInUse(GrafPtr port)
    {
        GetPort(&before_);
        SetPort(port);
    }
    ~PortInUse() { SetPort(before_); }
    PortInUse(const PortInUse &) = delete;

private:
    GrafPtr before_;
};

}  // namespace toolbox::quickdraw
