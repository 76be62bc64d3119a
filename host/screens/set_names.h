// Sets of screens by name: those that come with the program, and the user's own.
#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace riders::screens {

// A set is called by its file's name without ".toml". Either folder may be missing.
struct SetFolders {
    std::filesystem::path own;  // the user's, which win
    std::filesystem::path installed;
};

// The files of all sets by name.
std::map<std::string, std::filesystem::path> setFiles(const SetFolders &folders);
// The file of that set, whatever the case of the letters; or of a set that has no name, by its path. Throws
// io::Refusal.
std::filesystem::path setFileNamed(const std::string &nameOrFile, const SetFolders &folders);

}  // namespace riders::screens
