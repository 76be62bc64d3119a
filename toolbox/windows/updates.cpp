// What windows have to redraw.
#include "quickdraw/region_data.h"
#include "toolbox/windows.h"
#include "windows/painting.h"
#include "windows/window_list.h"

using namespace toolbox;
using namespace toolbox::windows;

namespace {

// The rectangle of the current port in global coordinates, cut to its window's
// content; empty when the port is not a window's.
Area inGlobal(const Rect &r, const Window *window)
{
    if (!window)
        return {};
    Point origin = globalOrigin(*window->record);
    return Area(r).movedBy(origin.h, origin.v) & window->content;
}

Window *currentWindow()
{
    GrafPtr port;
    GetPort(&port);
    return find(port);
}

}  // namespace

void InvalRect(const Rect *r)
{
    Window *window = currentWindow();
    if (window && window->record->visible)
        setUpdate(*window, window->update | inGlobal(*r, window));
}

void ValidRect(const Rect *r)
{
    if (Window *window = currentWindow())
        setUpdate(*window, window->update - inGlobal(*r, window));
}

void BeginUpdate(WindowPtr window)
{
    Window *found = find(window);
    if (!found || found->visibleBefore)
        return;
    Area visible = quickdraw::areaOf(window->visRgn);
    Point origin = globalOrigin(*found->record);
    found->visibleBefore = visible;
    quickdraw::storeArea(visible & found->update.movedBy(-origin.h, -origin.v), window->visRgn);
    setUpdate(*found, {});
}

void EndUpdate(WindowPtr window)
{
    Window *found = find(window);
    if (!found || !found->visibleBefore)
        return;
    quickdraw::storeArea(*found->visibleBefore, window->visRgn);
    found->visibleBefore.reset();
}
