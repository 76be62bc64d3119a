// Making and closing windows, and their order.
#include "toolbox/windows.h"

#include <utility>

#include "events/queue.h"
#include "quickdraw/port.h"
#include "quickdraw/port_scope.h"
#include "quickdraw/region_data.h"
#include "session/managers.h"
#include "toolbox/host/companion.h"
#include "toolbox/host/text.h"
#include "toolbox/memory.h"
#include "windows/activation.h"
#include "windows/desktop.h"
#include "windows/frame.h"
#include "windows/onto_displays.h"
#include "windows/painting.h"
#include "windows/window_list.h"

using namespace toolbox;
using namespace toolbox::windows;

namespace {

bool started = false;
Area displaysBefore;   // all that windows may cover of them, as of the last change

WindowPtr nextToUpdate()
{
    Area visible = uncovered(0);
    for (const Window &window : list) {
        if (!window.record->visible)
            continue;
        if (!window.updateHeld && !(visible & window.update).empty())
            return portOf(window.record);
        visible = visible - window.structure;
    }
    return nullptr;
}

// nil: behind all others; (WindowPtr)-1: in front of all; else right behind that one.
size_t placeBehind(WindowPtr behind)
{
    if (behind == reinterpret_cast<WindowPtr>(-1))
        return 0;
    return behind ? positionOf(peek(behind)) + 1 : list.size();
}

bool makeRegions(WindowPeek record)
{
    record->strucRgn = NewRgn();
    record->contRgn = NewRgn();
    record->updateRgn = NewRgn();
    return record->strucRgn && record->contRgn && record->updateRgn && record->port.visRgn && record->port.clipRgn;
}

void disposeRegions(WindowPeek record)
{
    DisposeRgn(record->strucRgn);
    DisposeRgn(record->contRgn);
    DisposeRgn(record->updateRgn);
    quickdraw::closePort(&record->port);
}

void place(Window &window, const Rect &content)
{
    shapeWindow(window, content);
    quickdraw::placePort(portOf(window.record), Point{content.top, content.left}, content.right - content.left,
                         content.bottom - content.top);
}

// Every change of which window covers which ends here: what it uncovered or
// moved is painted.
void afterChange(const Area &exposed)
{
    recalculateVisible();
    paint(exposed);
    updateActivation();
}

// Erasing in the window uses its table's colour.
void useContentColor(Window &window)
{
    quickdraw::PortScope current(portOf(window.record));
    int32_t background = whiteColor;
    if (auto content = colorOf(window.colors, 0); content && displayHasColors())
        background = forDrawing(*content);
    BackColor(background);
}

// Displays have become smaller or fewer. Windows that were out of sight before
// stay where the user or the program put them.
void bringBackLost(const Area &before, const Area &now)
{
    for (Window &window : list) {
        if (!window.record->visible || isLost(window, before) || !isLost(window, now))
            continue;
        const Point way = wayOntoDisplays(window.structure.bounds());
        Rect content = window.contentRect;
        OffsetRect(&content, way.h, way.v);
        place(window, content);
    }
}

void disappear(Window &window)
{
    window.record->visible = false;
    setUpdate(window, {});
    afterChange(Area(window.structure));
}

void hideCompanion(const Window &window)
{
    if (find(window.companion))
        HideWindow(portOf(window.companion));
}

void forgetCompanion(WindowPeek record)
{
    for (Window &window : list)
        if (window.companion == record)
            window.companion = nullptr;
}

}  // namespace

namespace toolbox::managers {

void startWindows(const Configuration &)
{
    list.clear();
    watcher = nullptr;
    forgetActivation();
    events::nextWindowNeedingUpdate = nextToUpdate;
    events::displaysChanged = windows::displaysChanged;
    started = true;
    displaysBefore = quickdraw::areaOf(GetGrayRgn());
    paintAll();
}

void stopWindows()
{
    // The blocks themselves are freed with the heap.
    started = false;
    displaysBefore = {};
    list.clear();
    watcher = nullptr;
    forgetActivation();
    events::nextWindowNeedingUpdate = nullptr;
    events::displaysChanged = nullptr;
}

int openWindowCount()
{
    return static_cast<int>(list.size());
}

}  // namespace toolbox::managers

void windows::displaysChanged()
{
    if (!started)
        return;
    for (Window &window : list)
        if (!window.colors.empty())
            useContentColor(window);
    const Area displays = quickdraw::areaOf(GetGrayRgn());
    bringBackLost(std::exchange(displaysBefore, displays), displays);
    paintAll();
}

void toolbox::setCompanion(WindowPtr window, WindowPtr companion)
{
    if (Window *found = find(window))
        found->companion = peek(companion);
}

WindowPtr NewWindow(void *storage, const Rect *bounds, ConstStr255Param title, Boolean visible, int16_t procID,
                    WindowPtr behind, Boolean goAway, intptr_t refCon)
{
    Rect content = *bounds;
    WindowPeek record = static_cast<WindowPeek>(storage);
    if (!record)
        record = reinterpret_cast<WindowPeek>(NewPtr(sizeof(WindowRecord)));
    if (!record)
        return nullptr;
    *record = WindowRecord{};
    quickdraw::openPort(&record->port);
    record->windowKind = userKind;
    record->goAwayFlag = goAway;
    record->procID = procID;
    record->refCon = refCon;
    setPascal(record->title, pascalView(title));
    if (!makeRegions(record)) {
        disposeRegions(record);
        if (!storage)
            DisposePtr(reinterpret_cast<Ptr>(record));
        return nullptr;
    }
    Window window{record};
    place(window, content);
    SetEmptyRgn(record->port.visRgn);
    putAt(placeBehind(behind), window);
    if (visible)
        ShowWindow(portOf(record));
    return portOf(record);
}

void CloseWindow(WindowPtr window)
{
    Window *closing = find(window);
    if (!closing)
        return;
    WindowPeek record = closing->record;
    hideCompanion(*closing);
    forgetCompanion(record);
    notifyWatcher(record, Change::closing);
    if (disposeControls)
        disposeControls(window);
    forgetWindow(record);
    if (record->visible)
        disappear(*find(window));
    takeOut(record);
    disposeRegions(record);
}

void DisposeWindow(WindowPtr window)
{
    if (!find(window))
        return;
    CloseWindow(window);
    DisposePtr(reinterpret_cast<Ptr>(window));
}

void BringToFront(WindowPtr window)
{
    Window *found = find(window);
    if (!found)
        return;
    Window moved = *found;
    Area exposed = moved.structure - uncovered(positionOf(moved.record));
    takeOut(moved.record);
    putAt(0, moved);
    if (moved.record->visible)
        afterChange(exposed);
}

void SelectWindow(WindowPtr window)
{
    BringToFront(window);
}

void ShowWindow(WindowPtr window)
{
    Window *found = find(window);
    if (!found || found->record->visible)
        return;
    found->record->visible = true;
    notifyWatcher(found->record, Change::shown);
    found->record->hilited = FrontWindow() == window;
    afterChange(Area(found->structure));
}

void HideWindow(WindowPtr window)
{
    Window *found = find(window);
    if (!found || !found->record->visible)
        return;
    hideCompanion(*found);
    notifyWatcher(found->record, Change::hidden);
    disappear(*found);
}

void MoveWindow(WindowPtr window, int16_t h, int16_t v, Boolean front)
{
    Window *found = find(window);
    if (!found)
        return;
    Rect content = found->contentRect;
    Area before = found->structure;
    OffsetRect(&content, h - content.left, v - content.top);
    place(*found, content);
    setUpdate(*found, {});
    if (found->record->visible)
        afterChange(before | found->structure);
    if (front)
        BringToFront(window);
}

void SizeWindow(WindowPtr window, int16_t width, int16_t height, Boolean update)
{
    (void)update;   // new content always needs an update
    Window *found = find(window);
    if (!found)
        return;
    Rect content = found->contentRect;
    Area structure = found->structure;
    Area kept = found->content;
    content.right = content.left + width;
    content.bottom = content.top + height;
    place(*found, content);
    if (found->record->visible)
        afterChange((structure | found->structure) - (kept & found->content));
}

void SetWTitle(WindowPtr window, ConstStr255Param title)
{
    if (Window *found = find(window)) {
        setPascal(found->record->title, pascalView(title));
        paintFrame(*found);
    }
}

void GetWTitle(WindowPtr window, Str255 title)
{
    setPascal(title, find(window) ? pascalView(peek(window)->title) : std::string_view());
}

void SetWRefCon(WindowPtr window, intptr_t value)
{
    peek(window)->refCon = value;
}

intptr_t GetWRefCon(WindowPtr window)
{
    return peek(window)->refCon;
}

int16_t FindWindow(Point where, WindowPtr *window)
{
    *window = nullptr;
    if (!uncovered(0).contains(where.h, where.v))
        return PtInRect(where, &qd.screenBits.bounds) ? inMenuBar : inDesk;
    for (const Window &candidate : list) {
        if (!candidate.record->visible || !candidate.structure.contains(where.h, where.v))
            continue;
        *window = portOf(candidate.record);
        if (candidate.content.contains(where.h, where.v))
            return inContent;
        return partOfFrame(candidate, where);
    }
    return inDesk;
}

void SetWinColor(WindowPtr window, Handle colorTable)
{
    Window *found = find(window);
    if (!found)
        return;
    found->colors = readColorTable(colorTable);
    useContentColor(*found);
    if (found->record->visible)
        paint(Area(found->structure));
}
