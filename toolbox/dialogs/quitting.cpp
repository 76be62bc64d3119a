#include "dialogs/quitting.h"

#include <algorithm>

#include "events/queue.h"
#include "toolbox/host/quit.h"
#include "toolbox/host/trace.h"
#include "toolbox/keys.h"

namespace toolbox::dialogs {
namespace {

constexpr int patience = 2;

bool isButton(const Item &item)
{
    constexpr int hiddenFrom = 8192;
    return item.kind() == ctrlItem + btnCtrl && item.handle && item.box.left < hiddenFrom;
}

bool isPressable(Dialog &dialog, int number)
{
    Item *item = dialog.item(number);
    if (!item || !isButton(*item) || !item->enabled())
        return false;
    auto *control = reinterpret_cast<ControlHandle>(item->handle);
    return (**control).contrlVis && (**control).contrlHilite != 255;
}

// 0 if there is none, or more than one to choose from.
int16_t cancelButton(Dialog &dialog)
{
    if (isPressable(dialog, cancel))
        return cancel;
    int16_t only = 0;
    for (int number = 1; number <= static_cast<int>(dialog.items.size()); ++number) {
        if (!isPressable(dialog, number))
            continue;
        if (only != 0)
            return 0;
        only = static_cast<int16_t>(number);
    }
    return only;
}

EventRecord returnKey()
{
    return events::keyStruck(key::carriageReturn, keycode::carriageReturn);
}

EventRecord cancelKey(bool first)
{
    return first ? events::keyStruck(key::escape, keycode::escape) : events::keyStruck('.', keycode::period, cmdKey);
}

std::optional<int16_t> askToCancel(Dialog &dialog, ModalFilterProcPtr filter)
{
    if (dialog.quitAsks == patience) {
        dialog.quitAsks = 0;
        dropQuit();
        trace::line("quit dropped");
        return std::nullopt;
    }
    bool first = ++dialog.quitAsks == 1;
    trace::line("quit asks %s %d to cancel", dialog.alert ? "alert" : "dialog", dialog.id);
    DialogPtr pointer = dialog.pointer();
    EventRecord event = cancelKey(first);
    int16_t hit = 0;
    bool taken = filter(pointer, &event, &hit);
    if (!find(pointer) || (taken && (hit != 0 || first)))
        return hit;
    if (int16_t button = cancelButton(dialog))
        return button;
    if (!taken && std::none_of(dialog.items.begin(), dialog.items.end(), isButton)) {
        event = returnKey();
        taken = filter(pointer, &event, &hit);
    }
    return taken ? std::optional<int16_t>(hit) : std::nullopt;
}

}  // namespace

std::optional<int16_t> askToCancelIfQuitting(Dialog &dialog, const EventRecord &event, ModalFilterProcPtr filter)
{
    if (!quitAsked())
        dialog.quitAsks = 0;
    else if (event.what == nullEvent)
        return askToCancel(dialog, filter);
    return std::nullopt;
}

}  // namespace toolbox::dialogs
