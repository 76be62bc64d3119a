// Drawing on somebody else's behalf: port, pen, text and colours are put back.
#pragma once

#include "quickdraw/area.h"
#include "quickdraw/port.h"

namespace toolbox {

using PortScope = quickdraw::PortInUse;

// Makes a port current with a plain pen and the system's text settings, and
// puts everything back: what the port's owner set, and the former port.
class DrawingScope {
public:
    explicit DrawingScope(GrafPtr port) : current_(port), port_(port), kept_(*port)
    {
        PenNormal();
        TextFont(systemFont);
        TextSize(0);
        TextFace(normal);
        TextMode(srcOr);
    }
    ~DrawingScope();
    DrawingScope(const DrawingScope &) = delete;

private:
    PortScope current_;
    GrafPtr port_;
    GrafPort kept_;
};

// Narrows the current port's clipping, until the end of scope.
class ClipScope {
public:
    explicit ClipScope(const quickdraw::Area &area);
    explicit ClipScope(const Rect &r) : ClipScope(quickdraw::Area(r)) {}
    ~ClipScope();
    ClipScope(const ClipScope &) = delete;

private:
    GrafPtr port_ = nullptr;
    quickdraw::Area before_;
};

}  // namespace toolbox
