#include "windows/painting.h"

#include "quickdraw/port.h"
#include "quickdraw/port_scope.h"
#include "quickdraw/region_data.h"
#include "toolbox/host/menu_bar.h"
#include "windows/desktop.h"
#include "windows/frame.h"

namespace toolbox::windows {
namespace {

// The desktop's port, narrowed to an area.
class DesktopScope {
public:
    explicit DesktopScope(const Area &area) : drawing_(quickdraw::desktopPort()), clip_(area)
    {
        ForeColor(blackColor);
        BackColor(whiteColor);
    }

private:
    quickdraw::DrawingScope drawing_;
    quickdraw::ClipScope clip_;
};

void paintFrameIn(const Window &window, const Area &exposed)
{
    DesktopScope scope(exposed);
    drawFrame(window);
}

void paintContentIn(Window &window, const Area &exposed)
{
    setUpdate(window, window.update | exposed);
    DesktopScope scope(exposed);
    if (auto color = colorOf(window.colors, 0); color && displayHasColors())
        BackColor(forDrawing(*color));
    Rect all = exposed.bounds();
    EraseRect(&all);
}

Rect menuBar()
{
    Rect bar = qd.screenBits.bounds;
    bar.bottom = static_cast<int16_t>(bar.top + menuBarHeight);
    return bar;
}

void paintDesktop(const Area &exposed)
{
    DesktopScope scope(exposed);
    PenPat(&qd.gray);
    Rect all = exposed.bounds();
    PaintRect(&all);
}

}  // namespace

std::function<void()> drawMenuTitles;

void paintMenuBar()
{
    Rect bar = menuBar();
    DesktopScope scope{Area(bar)};
    EraseRect(&bar);
    MoveTo(bar.left, bar.bottom - 1);
    LineTo(bar.right - 1, bar.bottom - 1);
    if (drawMenuTitles)
        drawMenuTitles();
}

Point globalOrigin(const WindowRecord &record)
{
    Point origin{0, 0};
    quickdraw::PortScope current(const_cast<GrafPtr>(&record.port));
    LocalToGlobal(&origin);
    return origin;
}

Area uncovered(size_t position)
{
    Area area = quickdraw::areaOf(GetGrayRgn());
    for (size_t i = 0; i < position && i < list.size(); ++i)
        if (list[i].record->visible)
            area = area - list[i].structure;
    return area;
}

void recalculateVisible()
{
    for (size_t i = 0; i < list.size(); ++i) {
        Window &window = list[i];
        Point origin = globalOrigin(*window.record);
        Area visible;
        if (window.record->visible)
            visible = (uncovered(i) & window.content).movedBy(-origin.h, -origin.v);
        RgnHandle region = window.record->port.visRgn;
        if (window.visibleBefore) {
            window.visibleBefore = visible;
            visible = visible & quickdraw::areaOf(region);
        }
        quickdraw::storeArea(visible, region);
    }
}

void paint(const Area &exposed)
{
    Area left = exposed & uncovered(0);
    for (Window &window : list) {
        if (!window.record->visible)
            continue;
        if (Area frame = (left & window.structure) - window.content; !frame.empty())
            paintFrameIn(window, frame);
        if (Area content = left & window.content; !content.empty())
            paintContentIn(window, content);
        left = left - window.structure;
    }
    if (!left.empty())
        paintDesktop(left);
}

void paintFrame(const Window &window)
{
    if (!window.record->visible)
        return;
    if (Area frame = (uncovered(positionOf(window.record)) & window.structure) - window.content; !frame.empty())
        paintFrameIn(window, frame);
}

void setUpdate(Window &window, const Area &update)
{
    window.update = update;
    quickdraw::storeArea(update, window.record->updateRgn);
}

void paintAll()
{
    paintMenuBar();
    recalculateVisible();
    paint(uncovered(0));
}

}  // namespace toolbox::windows
