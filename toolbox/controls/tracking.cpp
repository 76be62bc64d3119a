// Following the mouse from the press on a control to the release.
#include "controls/look.h"
#include "controls/scroll_bar.h"
#include "events/tracking.h"
#include "memory/locked.h"
#include "quickdraw/port_scope.h"
#include "toolbox/controls.h"
#include "toolbox/events.h"
#include "toolbox/host/trace.h"

using namespace toolbox;

namespace {

using ScrollAction = void (*)(ControlHandle, int16_t);

Point localOf(ControlHandle control, Point global)
{
    quickdraw::PortScope current((**control).contrlOwner);
    GlobalToLocal(&global);
    return global;
}

// Also while a part is hilited as pressed: only a dimmed control has no parts.
int16_t partUnder(ControlHandle control, Point local)
{
    return TestControl(control, local);
}

int16_t trackPart(ControlHandle control, Point local, int16_t part)
{
    bool inside = partUnder(control, local) == part;
    controls::setHilite(control, inside ? static_cast<uint8_t>(part) : 0);
    while (auto input = events::nextTrackingInput()) {
        inside = partUnder(control, localOf(control, input->where)) == part;
        if (input->kind == Input::Kind::mouseUp) {
            controls::setHilite(control, 0);
            return inside ? part : 0;
        }
        controls::setHilite(control, inside ? static_cast<uint8_t>(part) : 0);
    }
    controls::setHilite(control, 0);
    return 0;
}

// The release ended a loop over StillDown; it must not become an event.
void dropRelease()
{
    EventRecord event;
    EventAvail(1 << mouseUp, &event);
    if (event.what == mouseUp)
        GetNextEvent(1 << mouseUp, &event);
}

int16_t trackRepeating(ControlHandle control, int16_t part, ScrollAction action)
{
    quickdraw::PortScope current((**control).contrlOwner);
    Point where;
    bool inside;
    do {
        GetMouse(&where);
        inside = partUnder(control, where) == part;
        bool arrow = part == inUpButton || part == inDownButton;
        controls::setHilite(control, inside && arrow ? static_cast<uint8_t>(part) : 0);
        if (inside)
            action(control, part);
    } while (StillDown());
    controls::setHilite(control, 0);
    dropRelease();
    return inside ? part : 0;
}

int alongBar(const controls::ScrollBar &bar, Point from, Point to)
{
    return bar.vertical ? to.v - from.v : to.h - from.h;
}

// Whether the mouse is so far off the bar that the thumb springs back.
bool strayed(const controls::ScrollBar &bar, Point where)
{
    Rect allowed = bar.whole;
    InsetRect(&allowed, -32, -32);
    return !PtInRect(where, &allowed);
}

int16_t trackThumb(ControlHandle control, Point start)
{
    const ControlRecord before = **control;
    const controls::ScrollBar bar(before);
    while (auto input = events::nextTrackingInput()) {
        Point where = localOf(control, input->where);
        int16_t value = strayed(bar, where) ? before.contrlValue : bar.valueAfter(before, alongBar(bar, start, where));
        if (value != (**control).contrlValue)
            SetCtlValue(control, value);
        if (input->kind == Input::Kind::mouseUp)
            return value == before.contrlValue ? 0 : static_cast<int16_t>(inThumb);
    }
    SetCtlValue(control, before.contrlValue);
    return 0;
}

}  // namespace

int16_t TrackControl(ControlHandle control, Point where, ProcPtr action)
{
    int16_t part = TestControl(control, where);
    if (part == 0)
        return 0;
    if (part == inThumb)
        return trackThumb(control, where);
    if (action && (**control).procID == scrollBarProc)
        return trackRepeating(control, part, reinterpret_cast<ScrollAction>(action));
    part = trackPart(control, where, part);
    if (part != 0 && (**control).procID != scrollBarProc) {
        Locked record(control);
        trace::line("press %s", trace::quoted(record->contrlTitle).c_str());
    }
    return part;
}
