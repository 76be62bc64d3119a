#include "quickdraw/port_scope.h"

#include "quickdraw/region_data.h"

namespace toolbox::quickdraw {

DrawingScope::DrawingScope(GrafPtr port) : current_(port), port_(port), kept_(*port)
{
    PenNormal();
    TextFont(systemFont);
    TextSize(0);
    TextFace(normal);
    TextMode(srcOr);
}

DrawingScope::~DrawingScope()
{
    SetPort(port_);
    PenSize(kept_.pnSize.h, kept_.pnSize.v);
    PenMode(kept_.pnMode);
    PenPat(&kept_.pnPat);
    MoveTo(kept_.pnLoc.h, kept_.pnLoc.v);
    TextFont(kept_.txFont);
    TextFace(kept_.txFace);
    TextMode(kept_.txMode);
    TextSize(kept_.txSize);
    ForeColor(kept_.fgColor);
    BackColor(kept_.bkColor);
}

ClipScope::ClipScope(const Area &area)
{
    GetPort(&port_);
    before_ = areaOf(port_->clipRgn);
    storeArea(before_ & area, port_->clipRgn);
}

ClipScope::~ClipScope()
{
    storeArea(before_, port_->clipRgn);
}

}  // namespace toolbox::quickdraw
