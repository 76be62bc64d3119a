// What the shared object that makes windows exports. Private to the Toolbox.
#pragma once

#include "toolbox/host/desktop.h"

namespace toolbox {

constexpr bool isDepth(int bits)
{
    return bits == 1 || bits == 2 || bits == 4 || bits == 8 || bits == 32;
}

// Opens the window. The caller owns what is returned; throws as openDesktop does.
using OpenDesktopProc = Desktop *(const DesktopOptions &options);
inline constexpr const char *openDesktopName = "riders_open_desktop";

}  // namespace toolbox
