#include "quickdraw/dimming.h"

#include "toolbox/quickdraw.h"

void toolbox::quickdraw::dim(const Rect &r)
{
    PenPat(&qd.gray);
    PenMode(patBic);
    PaintRect(&r);
    PenNormal();
}
