// Starting and stopping the Toolbox, and asking what was left over.
//
// For hosts and tests; the plug-in never includes this. One session at a time.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "toolbox/host/machine.h"

namespace toolbox {

struct Configuration {
    std::int32_t heapBytes = 8 * 1024 * 1024;
    // Move every unlocked block at each allocation, so that a pointer kept too
    // long is found at once.
    bool moveBlocks = false;
    std::int32_t systemVersion = 0x0755;
    // What Gestalt returns for 'qd  '; below 0x100 means without colour.
    std::int32_t quickDrawVersion = 0x0230;
    // False: Gestalt fails for 'qd  '.
    bool quickDrawKnown = true;
    char decimalPoint = '.';
    // False: IUGetIntl returns nil.
    bool hasNumberFormat = true;
    // FindFolder's 'pref'; empty: $XDG_CONFIG_HOME/riders or ~/.config/riders.
    std::filesystem::path preferencesFolder;
    // Where Standard File opens first; empty: the home folder.
    std::filesystem::path startFolder;
};

// Stops a session that is running, and makes heap, displays and tables. The
// machine must outlive the session. std::bad_alloc when there is no memory for what
// the managers need themselves; then no session runs.
void start(const Configuration &configuration, Machine &machine);
// Closes files, frees every block. Safe to call when not started.
void stop();
// The machine and the configuration of the running session; machine() throws
// std::logic_error when there is none.
Machine &machine();
const Configuration &configuration();

// What is still there. Purgeable resources do not count: the Memory Manager
// may drop them whenever it likes.
struct LeakReport {
    int pointers = 0;
    int handles = 0;
    int openFiles = 0;
    int openWindows = 0;
    int loadedResources = 0;

    bool operator==(const LeakReport &) const = default;
    std::string text() const;
};
LeakReport leftBehind();

// Thrown by ExitToShell, through the plug-in, to whatever called it: the
// process is to end. Everything the session holds is freed by stop().
struct ProcessEnded {};

}  // namespace toolbox
