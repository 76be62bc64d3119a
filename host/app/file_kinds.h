// What kind of file a file is, for lists of files.
#pragma once

#include <filesystem>

namespace riders::app {

// By how its name ends, or else by its first bytes. False for what cannot be read, and for what is no ordinary
// file. A riders file counts as a job: it can be opened like one.
bool isJobFile(const std::filesystem::path &file);
// By its first bytes.
bool isRidersFile(const std::filesystem::path &file);

}  // namespace riders::app
