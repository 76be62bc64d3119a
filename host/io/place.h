// Where a file that is written really is, and what it keeps of the one before it.
#pragma once

#include <sys/stat.h>

#include <filesystem>

namespace riders::io {

std::filesystem::path folderOf(const std::filesystem::path &file);

// Follows the links at the end of the path. Throws Refusal where they go in circles, or where somebody else has put
// one in a folder that all may write to.
std::filesystem::path pastLinks(const std::filesystem::path &shown);

// For the open file that is to replace one of that status. Throws Refusal, naming what is shown.
void takeOwnerAndMode(int descriptor, const struct stat &from, const std::filesystem::path &shown);

}  // namespace riders::io
