#include "quickdraw/port.h"

#include "quickdraw/current_port.h"
#include "quickdraw/region_data.h"

namespace toolbox::quickdraw {

static GrafPort desktop;

static constexpr Rect everything{-32767, -32767, 32767, 32767};

// Everything except the regions.
static void resetPort(GrafPort &port, const Rect &rect)
{
    port = {};
    port.portRect = rect;
    port.bkPat = qd.white;
    port.pnPat = qd.black;
    port.pnSize = {1, 1};
    port.pnMode = patCopy;
    port.txMode = srcOr;
    port.fgColor = blackColor;
    port.bkColor = whiteColor;
}

void openPort(GrafPtr port)
{
    resetPort(*port, qd.screenBits.bounds);
    port->visRgn = NewRgn();
    port->clipRgn = NewRgn();
    storeArea(Area(port->portRect), port->visRgn);
    storeArea(Area(everything), port->clipRgn);
}

void closePort(GrafPtr port)
{
    DisposeRgn(port->visRgn);
    DisposeRgn(port->clipRgn);
    port->visRgn = nullptr;
    port->clipRgn = nullptr;
    if (qd.thePort == port)
        SetPort(&desktop);
}

void placePort(GrafPtr port, Point globalTopLeft, int16_t width, int16_t height)
{
    Rect &rect = port->portRect;
    rect.right = static_cast<int16_t>(rect.left + width);
    rect.bottom = static_cast<int16_t>(rect.top + height);
    Rect &bounds = port->portBits.bounds;
    OffsetRect(&bounds, static_cast<int16_t>(globalTopLeft.h - rect.left - bounds.left),
               static_cast<int16_t>(globalTopLeft.v - rect.top - bounds.top));
}

GrafPtr desktopPort()
{
    return &desktop;
}

void startDesktopPort()
{
    openPort(&desktop);
    SetPort(&desktop);
}

void stopDesktopPort()
{
    closePort(&desktop);
    qd.thePort = nullptr;
}

void fitDesktopPort(const Area &area)
{
    desktop.portRect = area.bounds();
    storeArea(area, desktop.visRgn);
}

GrafPort &currentPort()
{
    return qd.thePort ? *qd.thePort : desktop;
}

}  // namespace toolbox::quickdraw

using namespace toolbox::quickdraw;

void GetPort(GrafPtr *port)
{
    *port = qd.thePort;
}

void SetPort(GrafPtr port)
{
    qd.thePort = port;
}

static void moveBy(Point &point, int dh, int dv)
{
    point = {static_cast<int16_t>(point.v + dv), static_cast<int16_t>(point.h + dh)};
}

void SetOrigin(int16_t h, int16_t v)
{
    GrafPort &port = currentPort();
    const auto dh = static_cast<int16_t>(h - port.portRect.left);
    const auto dv = static_cast<int16_t>(v - port.portRect.top);
    OffsetRect(&port.portRect, dh, dv);
    OffsetRect(&port.portBits.bounds, static_cast<int16_t>(-dh), static_cast<int16_t>(-dv));
    OffsetRgn(port.visRgn, dh, dv);
}

void LocalToGlobal(Point *point)
{
    const Rect &bounds = currentPort().portBits.bounds;
    moveBy(*point, bounds.left, bounds.top);
}

void GlobalToLocal(Point *point)
{
    const Rect &bounds = currentPort().portBits.bounds;
    moveBy(*point, -bounds.left, -bounds.top);
}

void ClipRect(const Rect *r)
{
    storeArea(Area(*r), currentPort().clipRgn);
}

void SetClip(RgnHandle region)
{
    CopyRgn(region, currentPort().clipRgn);
}

void GetClip(RgnHandle region)
{
    CopyRgn(currentPort().clipRgn, region);
}

void ForeColor(int32_t color)
{
    currentPort().fgColor = color;
}

void BackColor(int32_t color)
{
    currentPort().bkColor = color;
}

void PenNormal(void)
{
    GrafPort &port = currentPort();
    port.pnSize = {1, 1};
    port.pnMode = patCopy;
    port.pnPat = qd.black;
}

void PenSize(int16_t width, int16_t height)
{
    currentPort().pnSize = {height, width};
}

void PenMode(int16_t mode)
{
    currentPort().pnMode = mode;
}

void PenPat(const Pattern *pattern)
{
    currentPort().pnPat = *pattern;
}

void GetPen(Point *point)
{
    *point = currentPort().pnLoc;
}

void MoveTo(int16_t h, int16_t v)
{
    currentPort().pnLoc = {v, h};
}

void Move(int16_t dh, int16_t dv)
{
    moveBy(currentPort().pnLoc, dh, dv);
}

void TextFont(int16_t font)
{
    currentPort().txFont = font;
}

void TextSize(int16_t points)
{
    currentPort().txSize = points;
}

void TextFace(int16_t face)
{
    currentPort().txFace = static_cast<uint8_t>(face);
}

void TextMode(int16_t mode)
{
    currentPort().txMode = mode;
}
