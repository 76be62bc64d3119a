#include "windows/activation.h"

#include "events/queue.h"
#include "windows/painting.h"

namespace toolbox::windows {
namespace {

WindowPtr active = nullptr;

void setHilited(WindowPtr window, bool hilited)
{
    const Window &changed = *find(window);
    changed.record->hilited = hilited;
    paintFrame(changed);
    events::postActivate(window, hilited);
}

}  // namespace

void updateActivation()
{
    WindowPtr front = FrontWindow();
    if (front == active)
        return;
    WindowPtr before = active;
    active = front;
    if (before)
        setHilited(before, false);
    if (front)
        setHilited(front, true);
}

void forgetWindow(WindowPeek record)
{
    events::forgetWindow(portOf(record));
    if (active == portOf(record))
        active = nullptr;
}

void forgetActivation()
{
    active = nullptr;
}

}  // namespace toolbox::windows
