#include "quickdraw/devices.h"

#include <deque>

#include "quickdraw/current_port.h"
#include "quickdraw/displays.h"
#include "quickdraw/region_data.h"
#include "toolbox/host/menu_bar.h"
#include "toolbox/host/session.h"

namespace toolbox::quickdraw {

namespace {

// Devices are never moved or freed while the Toolbox runs, so a handle to one
// stays valid when its display is gone.
struct Device {
    GDevice record{};
    GDPtr master = &record;
    PixMap map{};
    PixMapPtr mapMaster = &map;
};
std::deque<Device> devices;
RgnHandle grayRegion;

void fillDevice(Device &device, const Display &display, bool main)
{
    constexpr unsigned color = 1, allInitialised = 1u << 12;
    unsigned flags = color | allInitialised | 1u << screenDevice | 1u << screenActive;
    if (main)
        flags |= 1u << mainScreen;
    device.record.gdFlags = static_cast<int16_t>(flags);
    device.record.gdRect = display.bounds;
    device.record.gdPMap = &device.mapMaster;
    device.map = {display.bounds, static_cast<int16_t>(display.depth)};
}

void fillDevices(const std::vector<Display> &displays)
{
    while (devices.size() < displays.size())
        devices.emplace_back();
    for (Device &device : devices) {
        device.record.gdFlags = 0;
        device.record.gdNextGD = nullptr;
    }
    for (std::size_t i = 0; i < displays.size(); ++i) {
        fillDevice(devices[i], displays[i], i == 0);
        if (i > 0)
            devices[i - 1].record.gdNextGD = &devices[i].master;
    }
}

Area menuBarArea(const Rect &mainScreen)
{
    Rect bar = mainScreen;
    bar.bottom = static_cast<int16_t>(bar.top + menuBarHeight);
    return Area(bar);
}

}  // namespace

bool rebuildDevices()
{
    const std::vector<Display> displays = machine().displays();
    if (!setDisplays(displays))
        return false;
    fillDevices(displays);
    qd.screenBits.bounds = displays.front().bounds;
    storeArea(desktopArea() - menuBarArea(displays.front().bounds), grayRegion);
    fitDesktopPort(desktopArea());
    return true;
}

void startDevices()
{
    grayRegion = NewRgn();
    rebuildDevices();
}

void stopDevices()
{
    forgetDisplays();
    DisposeRgn(grayRegion);
    grayRegion = nullptr;
    devices.clear();
}

}  // namespace toolbox::quickdraw

using namespace toolbox::quickdraw;

RgnHandle GetGrayRgn(void)
{
    rebuildDevices();
    return grayRegion;
}

// A changed depth must be visible at once, before the change arrives as input.
GDHandle GetMainDevice(void)
{
    rebuildDevices();
    return &devices.front().master;
}

GDHandle GetDeviceList(void)
{
    return GetMainDevice();
}

GDHandle GetNextDevice(GDHandle device)
{
    return device ? (*device)->gdNextGD : nullptr;
}

Boolean TestDeviceAttribute(GDHandle device, int16_t attribute)
{
    if (!device || attribute < 0 || attribute > 15)
        return false;
    return static_cast<uint16_t>((*device)->gdFlags) >> attribute & 1;
}
