// What a command prints as its result.
#pragma once

#include <string>

namespace riders::commands {

// Prints the lines: on a terminal without what it would obey instead of showing it, otherwise as they are. Returns
// what went wrong, or nothing.
std::string printLines(const std::string &lines);

}  // namespace riders::commands
