#include "dialogs/placement.h"

#include <algorithm>

#include "quickdraw/region_data.h"
#include "toolbox/quickdraw.h"
#include "windows/frame.h"
#include "windows/screen.h"
#include "windows/window_list.h"

namespace toolbox::dialogs {
namespace {

// So many steps from the corner, from where on it begins again at the corner.
Rect staggered(Rect bounds, const Rect &screen)
{
    constexpr int step = 20, besideFrame = 10, belowTitle = 30;
    const auto visible = std::count_if(windows::list.begin(), windows::list.end(),
                                       [](const windows::Window &window) { return window.record->visible; });
    const int roomAcross = screen.right - screen.left - besideFrame - (bounds.right - bounds.left);
    const int roomDown = screen.bottom - screen.top - belowTitle - (bounds.bottom - bounds.top);
    const int places = std::max(0, std::min(roomAcross, roomDown)) / step + 1;
    const int away = static_cast<int>(visible) % places * step;
    OffsetRect(&bounds, static_cast<int16_t>(screen.left + besideFrame + away - bounds.left),
               static_cast<int16_t>(screen.top + belowTitle + away - bounds.top));
    return bounds;
}

// What windows may cover of the screen that shows most of the rectangle.
Rect roomFor(const Rect &frame)
{
    constexpr int menuBarHeight = 20;
    GDHandle best = GetMainDevice();
    int most = 0;
    for (GDHandle device = GetDeviceList(); device; device = GetNextDevice(device)) {
        Rect shared;
        SectRect(&(**device).gdRect, &frame, &shared);
        const int size = (shared.right - shared.left) * (shared.bottom - shared.top);
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

// The nearest start for a length so that it lies within; low when it does not fit.
int nearest(int start, int length, int low, int high)
{
    return std::max(low, std::min(start, high - length));
}

}  // namespace

void bringOntoScreens(DialogPtr dialog)
{
    const auto record = reinterpret_cast<WindowPeek>(dialog);
    const Rect frame = (**record->strucRgn).rgnBBox;
    const quickdraw::Area content((**record->contRgn).rgnBBox);
    if (windows::hasTitleBar(*record) || (content - quickdraw::areaOf(GetGrayRgn())).empty())
        return;
    const Rect room = roomFor(frame);
    const int across = nearest(frame.left, frame.right - frame.left, room.left, room.right) - frame.left;
    const int down = nearest(frame.top, frame.bottom - frame.top, room.top, room.bottom) - frame.top;
    const Point corner = windows::globalOrigin(*record);
    MoveWindow(dialog, static_cast<int16_t>(corner.h + dialog->portRect.left + across),
               static_cast<int16_t>(corner.v + dialog->portRect.top + down), false);
}

Rect placed(Rect bounds, int16_t position)
{
    // Low byte: where; the high byte's lower bits: how.
    constexpr int how = 0x3800, centred = 0x2800, alertLike = 0x3000, stagger = 0x3800;
    if ((position & 0xFF) != 0x0A)
        return bounds;
    Rect screen = qd.screenBits.bounds;
    screen.top += 20;
    if ((position & how) == stagger)
        return staggered(bounds, screen);
    int freeAcross = screen.right - screen.left - (bounds.right - bounds.left);
    int freeDown = screen.bottom - screen.top - (bounds.bottom - bounds.top);
    int above = 0;
    if ((position & how) == centred)
        above = freeDown / 2;
    else if ((position & how) == alertLike)
        above = freeDown / 5;
    else
        return bounds;
    OffsetRect(&bounds, static_cast<int16_t>(screen.left + freeAcross / 2 - bounds.left),
               static_cast<int16_t>(screen.top + above - bounds.top));
    return bounds;
}

}  // namespace toolbox::dialogs
