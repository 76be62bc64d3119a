// Making, finding and changing controls.
#include "toolbox/controls.h"

#include <algorithm>
#include <cstring>

#include "controls/look.h"
#include "controls/scroll_bar.h"
#include "memory/locked.h"
#include "session/managers.h"
#include "toolbox/host/text.h"
#include "toolbox/host/trace.h"
#include "toolbox/memory.h"
#include "windows/window_list.h"

using namespace toolbox;
using windows::peek;

namespace {

constexpr int inactive = 255;

Handle block(ControlHandle control)
{
    return reinterpret_cast<Handle>(control);
}

void takeFromList(ControlHandle control)
{
    WindowPeek window = peek((**control).contrlOwner);
    ControlHandle next = (**control).nextControl;
    if (window->controlList == control) {
        window->controlList = next;
        return;
    }
    for (ControlHandle at = window->controlList; at; at = (**at).nextControl)
        if ((**at).nextControl == control) {
            (**at).nextControl = next;
            return;
        }
}

// Erases the control where it was and draws it in its new rectangle.
void reshape(ControlHandle control, const Rect &r)
{
    bool visible = (**control).contrlVis;
    if (visible)
        controls::erase(control);
    (**control).contrlRect = r;
    controls::draw(control);
}

}  // namespace

void managers::startControls(const Configuration &)
{
    windows::disposeControls = KillControls;
}

void managers::stopControls()
{
    windows::disposeControls = nullptr;
}

ControlHandle NewControl(WindowPtr window, const Rect *bounds, ConstStr255Param title, Boolean visible, int16_t value,
                         int16_t min, int16_t max, int16_t procID, intptr_t refCon)
{
    ControlRecord made{};
    made.nextControl = peek(window)->controlList;
    made.contrlOwner = window;
    made.contrlRect = *bounds;
    made.contrlVis = visible ? 255 : 0;
    made.contrlMin = min;
    made.contrlMax = max;
    made.contrlValue = std::max(min, std::min(value, max));
    made.procID = procID;
    made.contrlRfCon = refCon;
    setPascal(made.contrlTitle, pascalView(title));
    Handle handle = NewHandle(sizeof made);
    if (!handle)
        return nullptr;
    std::memcpy(*handle, &made, sizeof made);
    ControlHandle control = reinterpret_cast<ControlHandle>(handle);
    peek(window)->controlList = control;
    controls::draw(control);
    return control;
}

void DisposeControl(ControlHandle control)
{
    HideControl(control);
    takeFromList(control);
    DisposeHandle((**control).colorTable);
    DisposeHandle(block(control));
}

void KillControls(WindowPtr window)
{
    while (ControlHandle control = peek(window)->controlList)
        DisposeControl(control);
}

void DrawControls(WindowPtr window)
{
    for (ControlHandle control = peek(window)->controlList; control; control = (**control).nextControl)
        controls::draw(control);
}

void Draw1Control(ControlHandle control)
{
    controls::draw(control);
}

void HiliteControl(ControlHandle control, int16_t part)
{
    if (part == inButton && controls::isPushButton(**control)) {
        Locked record(control);
        trace::line("flash %s", trace::quoted(record->contrlTitle).c_str());
    }
    controls::setHilite(control, static_cast<uint8_t>(part));
}

void ShowControl(ControlHandle control)
{
    (**control).contrlVis = 255;
    controls::draw(control);
}

void HideControl(ControlHandle control)
{
    if (!(**control).contrlVis)
        return;
    controls::erase(control);
    (**control).contrlVis = 0;
}

void MoveControl(ControlHandle control, int16_t h, int16_t v)
{
    Rect r = (**control).contrlRect;
    OffsetRect(&r, h - r.left, v - r.top);
    reshape(control, r);
}

void SizeControl(ControlHandle control, int16_t width, int16_t height)
{
    Rect r = (**control).contrlRect;
    r.right = r.left + width;
    r.bottom = r.top + height;
    reshape(control, r);
}

int16_t TestControl(ControlHandle control, Point where)
{
    Locked record(control);
    if (!record->contrlVis || record->contrlHilite == inactive || !PtInRect(where, &record->contrlRect))
        return 0;
    if (record->procID == scrollBarProc)
        return controls::ScrollBar(*record).partAt(where);
    return controls::isPushButton(*record) ? inButton : inCheckBox;
}

int16_t FindControl(Point where, WindowPtr window, ControlHandle *control)
{
    *control = nullptr;
    for (ControlHandle at = peek(window)->controlList; at; at = (**at).nextControl)
        if (int16_t part = TestControl(at, where)) {
            *control = at;
            return part;
        }
    return 0;
}

int16_t GetCtlValue(ControlHandle control)
{
    return (**control).contrlValue;
}

void SetCtlValue(ControlHandle control, int16_t value)
{
    int16_t fitting = std::max((**control).contrlMin, std::min(value, (**control).contrlMax));
    (**control).contrlValue = fitting;
    controls::draw(control);
}

void SetCtlMax(ControlHandle control, int16_t value)
{
    (**control).contrlMax = value;
    SetCtlValue(control, (**control).contrlValue);
}

void SetCTitle(ControlHandle control, ConstStr255Param title)
{
    setPascal((**control).contrlTitle, pascalView(title));
    controls::draw(control);
}

void GetCTitle(ControlHandle control, Str255 title)
{
    setPascal(title, pascalView((**control).contrlTitle));
}

void SetCtlColor(ControlHandle control, Handle colorTable)
{
    Handle copy = colorTable;
    if (copy && HandToHand(&copy) != noErr)
        return;
    DisposeHandle((**control).colorTable);
    (**control).colorTable = copy;
    controls::draw(control);
}
