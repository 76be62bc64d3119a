// Riders files taken apart, and put together again.
#pragma once

#include <string>
#include <string_view>

#include "reading/written.h"

namespace riders::reading {

// What can be found in these bytes, whoever wrote them: also in a file that was cut off, that somebody has edited,
// or that an earlier version made. What a text of the user's holds, such as a dot shape, is not taken for anything
// else.
Written writtenIn(std::string_view riders);

// The riders file in which that is written, as riders make and the plug-in make it. Where these bytes are those of
// a file, everything in it is known.
std::string ridersOf(const Written &written);

// The line that names the file from which a dot shape is; the plate is "*" for the rest. It has its line end.
std::string shapeNameLine(const std::string &plate, const std::string &file);

}  // namespace riders::reading
