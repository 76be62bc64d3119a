#include "toolbox/host/draw_pixels.h"

#include "quickdraw/current_port.h"
#include "quickdraw/displays.h"
#include "quickdraw/drawing.h"
#include "toolbox/host/trace.h"

namespace toolbox {

using namespace quickdraw;

void drawPixels(const Picture &picture, const Rect &box)
{
    const GrafPort &port = currentPort();
    const Area visible = visibleArea(port);
    const Rect global = toGlobal(port, Area(box)).bounds();
    if (picture.pixels.empty() || EmptyRect(&box) || (Area(global) & visible).empty())
        return;
    trace::drawing("pixels %d,%d,%d,%d", box.left, box.top, box.right, box.bottom);
    for (Surface &surface : surfaces())
        surface.drawImage(picture, global, false, surface.device(visible));
}

}  // namespace toolbox
