// What a power failure can take, by the order of a program's changes.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "support/file_changes.h"

// A disk keeps what was synced, and of all else any part, in any order. So whatever gets a name in the folder that
// a user sees must have been synced before, in full and with the names inside it, and the folder of that name
// after. A sentence for each change that breaks this. Hidden names (".riders-...") are not the user's.
std::vector<std::string> notOnDisk(const std::vector<FileChange> &changes, const std::filesystem::path &folder);
