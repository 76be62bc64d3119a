// A record of what happened, one line per event, in order.
//
// The managers write the session trace: dialogs, texts, beeps, menus, files.
// QuickDraw writes the drawing trace, kept apart and off unless wanted. Lines
// are UTF-8; inside a quoted text CR is written \r, a newline \n, a quote \", a
// backslash \\ and other controls \xHH, so that each stays on one line.
//
// Sinks outlive sessions and are called on the Toolbox's thread, in the middle
// of the call they report: they must not call the Toolbox.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "toolbox/types.h"

namespace toolbox::trace {

using Sink = std::function<void(const std::string &line)>;

// Where lines go from now on; an empty function drops them.
void setSink(Sink sink);
void setDrawingSink(Sink sink);
bool drawingWanted();

// printf-style; no line end.
void line(const char *format, ...) __attribute__((format(printf, 1, 2)));
void drawing(const char *format, ...) __attribute__((format(printf, 1, 2)));

// A Pascal string as it stands in a trace line, with its quotes, as UTF-8.
std::string quoted(const unsigned char *pascalString);
std::string quoted(const std::string &utf8);

// A sink that appends to lines. The vector must outlive its use as a sink.
Sink into(std::vector<std::string> &lines);

}  // namespace toolbox::trace
