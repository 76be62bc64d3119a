#include "windows/onto_displays.h"

#include <algorithm>

#include "toolbox/host/menu_bar.h"
#include "toolbox/quickdraw.h"
#include "windows/frame.h"

namespace toolbox::windows {
namespace {

int64_t pixelsOf(const Area &area)
{
    int64_t sum = 0;
    for (const quickdraw::Box &box : area.boxes())
        sum += int64_t{box.x2 - box.x1} * (box.y2 - box.y1);
    return sum;
}

// What windows may cover of the display that shows most of the rectangle.
Rect roomFor(const Rect &frame)
{
    GDHandle best = GetMainDevice();
    int64_t most = 0;
    for (GDHandle device = GetDeviceList(); device; device = GetNextDevice(device)) {
        const int64_t size = pixelsOf(Area((**device).gdRect) & Area(frame));
        if (size > most) {
            most = size;
            best = device;
        }
    }
    Rect room = (**best).gdRect;
    if (best == GetMainDevice())
        room.top = static_cast<int16_t>(room.top + menuBarHeight);
    return room;
}

// The start nearest to this one with which the length lies within; low when it
// does not fit.
int nearest(int start, int length, int low, int high)
{
    return std::max(low, std::min(start, high - length));
}

}  // namespace

Point wayOntoDisplays(const Rect &frame)
{
    const Rect room = roomFor(frame);
    const int across = nearest(frame.left, frame.right - frame.left, room.left, room.right) - frame.left;
    const int down = nearest(frame.top, frame.bottom - frame.top, room.top, room.bottom) - frame.top;
    return {static_cast<int16_t>(down), static_cast<int16_t>(across)};
}

bool isLost(const Window &window, const Area &displays)
{
    if (!hasTitleBar(*window.record))
        return !(window.content - displays).empty();
    return 2 * pixelsOf(window.structure & displays) < pixelsOf(window.structure);
}

}  // namespace toolbox::windows
