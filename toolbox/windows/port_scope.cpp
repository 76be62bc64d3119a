#include "windows/port_scope.h"

#include "quickdraw/region_data.h"

namespace toolbox {

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

ClipScope::ClipScope(const quickdraw::Area &area)
{
    GetPort(&port_);
    before_ = quickdraw::areaOf(port_->clipRgn);
    quickdraw::storeArea(before_ & area, port_->clipRgn);
}

ClipScope::~ClipScope()
{
    quickdraw::storeArea(before_, port_->clipRgn);
}

}  // namespace toolbox
