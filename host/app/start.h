// `riders` without a command: the program in a window on the desktop.
#pragma once

#include <string>

#include "app/application.h"

namespace riders::app {

// Opens the window and runs until the person quits. Returns what went wrong,
// for standard error; empty when all went well.
std::string startOnDesktop(const AppRequest &request);

}  // namespace riders::app
