// Drawing on behalf of another manager: what a block changes in the current port
// is restored at its end. Private to the Toolbox.
#pragma once

#include "quickdraw/area.h"
#include "toolbox/quickdraw.h"

namespace toolbox::quickdraw {

// The current port for the length of a block.
class PortScope {
public:
    explicit PortScope(GrafPtr port)
    {
        GetPort(&before_);
        SetPort(port);
    }
    ~PortScope() { SetPort(before_); }
    PortScope(const PortScope &) = delete;
    PortScope &operator=(const PortScope &) = delete;

private:
    GrafPtr before_;
};

// Makes a port current with a plain pen and the system's text settings, and
// restores everything: what the port's owner set, and the previous port.
class DrawingScope {
public:
    explicit DrawingScope(GrafPtr port);
    ~DrawingScope();
    DrawingScope(const DrawingScope &) = delete;
    DrawingScope &operator=(const DrawingScope &) = delete;

private:
    PortScope current_;
    GrafPtr port_;
    GrafPort kept_;
};

// Narrows the current port's clipping, until the end of the block.
class ClipScope {
public:
    explicit ClipScope(const Area &area);
    explicit ClipScope(const Rect &r) : ClipScope(Area(r)) {}
    ~ClipScope();
    ClipScope(const ClipScope &) = delete;
    ClipScope &operator=(const ClipScope &) = delete;

private:
    GrafPtr port_ = nullptr;
    Area before_;
};

}  // namespace toolbox::quickdraw
