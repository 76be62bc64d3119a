// Windows that are seen only together with another, for hosts.
#pragma once

#include "toolbox/windows.h"

namespace toolbox {

// From now on the companion is hidden whenever the window is hidden or closed. It is not shown again, nor moved,
// with it. A window has one companion, the latest; nil: none. Nothing happens for a window that does not exist,
// and either may be closed first.
void setCompanion(WindowPtr window, WindowPtr companion);

}  // namespace toolbox
