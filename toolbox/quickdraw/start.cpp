#include "quickdraw/current_port.h"
#include "quickdraw/devices.h"
#include "quickdraw/globals.h"
#include "quickdraw/polygons.h"
#include "session/managers.h"

namespace toolbox {

void managers::startQuickDraw(const Configuration &)
{
    quickdraw::resetGlobals();
    quickdraw::startDesktopPort();
    quickdraw::startDevices();
}

void managers::stopQuickDraw()
{
    quickdraw::forgetPolygon();
    quickdraw::stopDevices();
    quickdraw::stopDesktopPort();
    qd = {};
}

}  // namespace toolbox
