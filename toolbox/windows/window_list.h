// The windows, front to back, and what the Window Manager knows of them beyond
// their records. Private to the Toolbox.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "quickdraw/area.h"
#include "toolbox/windows.h"
#include "windows/color_table.h"

namespace toolbox::windows {

using quickdraw::Area;

struct Window {
    WindowPeek record = nullptr;
    ColorTable colors{};   // the copy that SetWinColor made
    // Global. The record's regions hold the same, for code that reads them.
    Rect contentRect{};
    Area structure{};
    Area content{};
    Area update{};
    std::optional<Area> visibleBefore{};   // local, between BeginUpdate and EndUpdate
    bool updateHeld = false;               // no update events for now
    WindowPeek companion = nullptr;        // hidden with it
};

// Front to back. The records' nextWindow links give the same order.
extern std::vector<Window> list;

Window *find(const void *window);
inline WindowPtr portOf(WindowPeek record) { return &record->port; }
inline WindowPeek peek(WindowPtr window) { return reinterpret_cast<WindowPeek>(window); }
void putAt(size_t position, const Window &window);
void takeOut(WindowPeek record);
size_t positionOf(WindowPeek record);

// Set by the Control Manager: disposes of the window's controls, when it closes.
extern std::function<void(WindowPtr)> disposeControls;

// Set by the Dialog Manager: called for each window that becomes visible, is
// hidden, or is about to close.
enum class Change { shown, hidden, closing };
extern std::function<void(WindowPtr, Change)> watcher;
void notifyWatcher(WindowPeek record, Change change);

// Holds back a window's update events until the next releaseUpdates, so that one
// that is not drawn does not hold back all other events.
void holdUpdates(WindowPtr window);
void releaseUpdates();

}  // namespace toolbox::windows
