// Waiting until what was written is on the disk.
#pragma once

#include <filesystem>
#include <string>

namespace riders::io {

// Both throw Refusal when the system finds that it cannot write. Where it cannot tell (pipes, some
// network folders), they do nothing.
void sync(int descriptor, const std::string &name);
// The names in the folder, after one was given or taken.
void syncFolder(const std::filesystem::path &folder);

// Makes the folder and those that it is in, where they are missing. Throws Refusal.
void makeFolders(const std::filesystem::path &folder);

// All ordinary files and folders in the folder, and itself.
void syncTree(const std::filesystem::path &folder);

}  // namespace riders::io
