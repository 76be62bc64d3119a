#include "windows/window_list.h"

#include <algorithm>

namespace toolbox::windows {
namespace {

void relink()
{
    for (size_t i = 0; i < list.size(); ++i)
        list[i].record->nextWindow = i + 1 < list.size() ? list[i + 1].record : nullptr;
}

}  // namespace

std::vector<Window> list;
std::function<void(WindowPtr)> disposeControls;
std::function<void(WindowPtr, Change)> watcher;

Window *find(const void *window)
{
    auto found = std::find_if(list.begin(), list.end(), [&](const Window &w) { return w.record == window; });
    return found == list.end() ? nullptr : &*found;
}

size_t positionOf(WindowPeek record)
{
    auto found = std::find_if(list.begin(), list.end(), [&](const Window &w) { return w.record == record; });
    return static_cast<size_t>(found - list.begin());
}

void putAt(size_t position, const Window &window)
{
    list.insert(list.begin() + static_cast<std::ptrdiff_t>(std::min(position, list.size())), window);
    relink();
}

void takeOut(WindowPeek record)
{
    std::erase_if(list, [&](const Window &window) { return window.record == record; });
    relink();
}

void notifyWatcher(WindowPeek record, Change change)
{
    if (watcher)
        watcher(portOf(record), change);
}

void holdUpdates(WindowPtr window)
{
    if (Window *held = find(window))
        held->updateHeld = true;
}

void releaseUpdates()
{
    for (Window &window : list)
        window.updateHeld = false;
}

}  // namespace toolbox::windows

using namespace toolbox::windows;

WindowPtr FrontWindow(void)
{
    for (const Window &window : list)
        if (window.record->visible)
            return portOf(window.record);
    return nullptr;
}
