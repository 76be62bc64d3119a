// What can be read on the displays, for hosts that say or show more about it.
#pragma once

#include <functional>
#include <string>

#include "toolbox/quickdraw.h"

namespace toolbox {

// Called at each DrawString, DrawText and DrawChar, before it draws, with the port, the pen (local) where the text
// begins, and the text, Mac OS Roman; also where nothing of it will be seen. Must not call the Toolbox.
using DrawnTextProc = std::function<void(GrafPtr port, Point pen, const std::string &text)>;
// From now on, for all ports; empty: nobody reads. May be called at any time.
void setDrawnTextProc(DrawnTextProc reader);

}  // namespace toolbox
