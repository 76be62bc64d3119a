#include "dialogs/modal.h"

#include <stdexcept>

#include "dialogs/drawing.h"
#include "dialogs/edit_field.h"
#include "dialogs/quitting.h"
#include "dialogs/undo.h"
#include "quickdraw/port_scope.h"
#include "textedit/keys.h"
#include "toolbox/events.h"
#include "toolbox/host/flash_button.h"
#include "toolbox/host/session.h"
#include "toolbox/keys.h"
#include "toolbox/system.h"
#include "windows/window_list.h"

namespace toolbox::dialogs {
namespace {

constexpr int16_t nothing = 0;

int characterOf(const EventRecord &event)
{
    return static_cast<int>(event.message & charCodeMask);
}

Boolean standardFilter(DialogPtr dialog, EventRecord *event, int16_t *itemHit)
{
    int character = characterOf(*event);
    if (event->what != keyDown || (character != key::carriageReturn && character != key::enter))
        return false;
    Dialog *found = find(dialog);
    int16_t number = found->record->aDefItem;
    Item *item = found->item(number);
    if (!item || !item->isControl() || !item->handle)
        return false;
    ControlHandle button = reinterpret_cast<ControlHandle>(item->handle);
    if ((**button).contrlHilite == 255)
        return false;
    flashButton(button);
    *itemHit = number;
    return true;
}

bool isMovable(const Dialog &dialog)
{
    return dialog.record->window.procID == movableDBoxProc;
}

bool isOutside(const Dialog &dialog, const EventRecord &event)
{
    if (event.what != mouseDown)
        return false;
    WindowPtr window;
    return FindWindow(event.where, &window) != inContent || window != dialog.pointer();
}

// A press beside a dialog that can be moved: it may be on its title bar.
void pressOutside(Dialog &dialog, const EventRecord &event)
{
    WindowPtr window;
    if (FindWindow(event.where, &window) != inDrag || window != dialog.pointer())
        return SysBeep(1);
    Rect displays = (**GetGrayRgn()).rgnBBox;
    DragWindow(window, event.where, &displays);
}

// The number of the item if it can be hit.
int16_t ifEnabled(Dialog &dialog, int number)
{
    Item *item = dialog.item(number);
    return item && item->enabled() ? static_cast<int16_t>(number) : nothing;
}

int16_t pressInEditItem(Dialog &dialog, int number, const EventRecord &event, Point local)
{
    endTyping(dialog);
    if (makeCurrent(dialog, number))
        TEClick(local, (event.modifiers & shiftKey) != 0, dialog.record->textH);
    return ifEnabled(dialog, number);
}

int16_t press(Dialog &dialog, const EventRecord &event)
{
    Point local = event.where;
    quickdraw::PortScope current(dialog.pointer());
    GlobalToLocal(&local);
    int number = FindDItem(dialog.pointer(), local) + 1;
    Item *item = dialog.item(number);
    if (!item)
        return nothing;
    if (item->kind() == editText)
        return pressInEditItem(dialog, number, event, local);
    if (!item->isControl())
        return ifEnabled(dialog, number);
    ControlHandle control = reinterpret_cast<ControlHandle>(item->handle);
    return control && TrackControl(control, local, nullptr) ? ifEnabled(dialog, number) : nothing;
}

// From system 7 on; before that, editing is left to the caller's filter.
void commandKey(Dialog &dialog, int character)
{
    if (configuration().systemVersion >= 0x0700)
        DlgCommandKey(dialog.pointer(), static_cast<int16_t>(character));
}

void typeInto(Dialog &dialog, int character, std::uint16_t modifiers)
{
    if (textedit::movesCaret(character))
        endTyping(dialog);
    else
        keepForUndo(dialog, Change::typing);
    textedit::typeKey(dialog.record->textH, character, modifiers);
}

int16_t typeKey(Dialog &dialog, const EventRecord &event)
{
    int character = characterOf(event);
    if (dialog.record->editField < 0)
        return nothing;
    if ((event.modifiers & cmdKey) && !textedit::movesCaret(character))
        commandKey(dialog, character);
    else if (character == key::tab)
        tabTo(dialog, event.modifiers & shiftKey ? -1 : 1);
    else if (textedit::isTyped(character))
        typeInto(dialog, character, event.modifiers);
    return ifEnabled(dialog, dialog.record->editField + 1);
}

// Updates any dialog; other windows are drawn by their owners afterwards.
void update(WindowPtr window)
{
    Dialog *dialog = find(window);
    if (!dialog)
        return windows::holdUpdates(window);
    BeginUpdate(window);
    drawAll(*dialog);
    EndUpdate(window);
}

void activate(const EventRecord &event)
{
    Dialog *dialog = find(reinterpret_cast<WindowPtr>(event.message));
    if (!dialog || dialog->record->editField < 0)
        return;
    if (event.modifiers & activeFlag)
        TEActivate(dialog->record->textH);
    else
        TEDeactivate(dialog->record->textH);
}

int16_t handle(Dialog &dialog, const EventRecord &event)
{
    switch (event.what) {
    case mouseDown:
        if (!isOutside(dialog, event))
            return press(dialog, event);
        pressOutside(dialog, event);
        return nothing;
    case keyDown:
    case autoKey: return typeKey(dialog, event);
    case updateEvt: update(reinterpret_cast<WindowPtr>(event.message)); return nothing;
    case activateEvt: activate(event); return nothing;
    case nullEvent:
        if (dialog.record->editField >= 0)
            TEIdle(dialog.record->textH);
        return nothing;
    default: return nothing;
    }
}

struct ReleaseUpdates {
    ReleaseUpdates() = default;
    ~ReleaseUpdates() { windows::releaseUpdates(); }
    ReleaseUpdates(const ReleaseUpdates &) = delete;
    ReleaseUpdates &operator=(const ReleaseUpdates &) = delete;
};

}  // namespace

int16_t runModally(DialogPtr dialog, ModalFilterProcPtr filter)
{
    ReleaseUpdates atEnd;
    if (!filter)
        filter = standardFilter;
    int16_t hit = nothing;
    for (;;) {
        EventRecord event;
        WaitNextEvent(everyEvent, &event, 1);
        Dialog *running = find(dialog);
        if (isOutside(*running, event) && !isMovable(*running)) {
            SysBeep(1);   // neither the dialog nor the filter sees it
            continue;
        }
        SetPort(dialog);
        if (auto cancelled = askToCancelIfQuitting(*running, event, filter))
            return *cancelled;
        if (filter(dialog, &event, &hit))
            return hit;
        if (!find(dialog))
            return hit;   // the filter closed it
        hit = handle(*running, event);
        if (hit != nothing)
            return hit;
    }
}

}  // namespace toolbox::dialogs

using namespace toolbox;
using namespace toolbox::dialogs;

void ModalDialog(ModalFilterProcPtr filter, int16_t *itemHit)
{
    WindowPtr front = FrontWindow();
    if (!find(front))
        throw std::logic_error("ModalDialog: the front window is no dialog");
    GrafPtr before;
    GetPort(&before);
    SetPort(front);
    int16_t hit = runModally(front, filter);
    if (before != front || find(front))
        SetPort(before);
    if (itemHit)
        *itemHit = hit;
}
