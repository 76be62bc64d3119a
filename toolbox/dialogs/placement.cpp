#include "dialogs/placement.h"

#include <algorithm>

#include "quickdraw/region_data.h"
#include "toolbox/host/menu_bar.h"
#include "toolbox/quickdraw.h"
#include "windows/frame.h"
#include "windows/onto_displays.h"
#include "windows/window_list.h"

namespace toolbox::dialogs {
namespace {

// A step from the corner for each visible window; at the corner again when there
// is no room for more.
Rect staggered(Rect bounds, const Rect &display)
{
    constexpr int step = 20, besideFrame = 10, belowTitle = 30;
    const auto visible = std::count_if(windows::list.begin(), windows::list.end(),
                                       [](const windows::Window &window) { return window.record->visible; });
    const int roomAcross = display.right - display.left - besideFrame - (bounds.right - bounds.left);
    const int roomDown = display.bottom - display.top - belowTitle - (bounds.bottom - bounds.top);
    const int places = std::max(0, std::min(roomAcross, roomDown)) / step + 1;
    const int away = static_cast<int>(visible) % places * step;
    OffsetRect(&bounds, static_cast<int16_t>(display.left + besideFrame + away - bounds.left),
               static_cast<int16_t>(display.top + belowTitle + away - bounds.top));
    return bounds;
}

}  // namespace

void bringOntoDisplays(DialogPtr dialog)
{
    const windows::Window &window = *windows::find(dialog);
    if (windows::hasTitleBar(*window.record) || !windows::isLost(window, quickdraw::areaOf(GetGrayRgn())))
        return;
    const Point way = windows::wayOntoDisplays(window.structure.bounds());
    const Rect &content = window.contentRect;
    MoveWindow(dialog, static_cast<int16_t>(content.left + way.h), static_cast<int16_t>(content.top + way.v), false);
}

Rect placed(Rect bounds, int16_t position)
{
    // Low byte: where; the high byte's lower bits: how.
    constexpr int how = 0x3800, centred = 0x2800, alertLike = 0x3000, stagger = 0x3800;
    if ((position & 0xFF) != 0x0A)
        return bounds;
    Rect display = qd.screenBits.bounds;
    display.top = static_cast<int16_t>(display.top + menuBarHeight);
    if ((position & how) == stagger)
        return staggered(bounds, display);
    int freeAcross = display.right - display.left - (bounds.right - bounds.left);
    int freeDown = display.bottom - display.top - (bounds.bottom - bounds.top);
    int above = 0;
    if ((position & how) == centred)
        above = freeDown / 2;
    else if ((position & how) == alertLike)
        above = freeDown / 5;
    else
        return bounds;
    OffsetRect(&bounds, static_cast<int16_t>(display.left + freeAcross / 2 - bounds.left),
               static_cast<int16_t>(display.top + above - bounds.top));
    return bounds;
}

}  // namespace toolbox::dialogs
