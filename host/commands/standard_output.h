// What a command prints as its result.
#pragma once

#include <filesystem>
#include <string>

namespace riders::commands {

// Prints the lines: on a terminal without what it would obey instead of showing it, otherwise as they are. Returns
// what went wrong, or nothing.
std::string printLines(const std::string &lines);
// A line with the path: its very bytes for programs, but a terminal gets none that it would obey. Returns the
// same.
std::string printPath(const std::filesystem::path &path);

}  // namespace riders::commands
