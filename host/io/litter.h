// Temporary files and folders that a killed process leaves, and how the next one knows them.
//
// They have names that cannot be guessed, belong to the user, and are locked for as long as their process lives.
// Earlier versions made others (.riders-PID-N, .riders-proof- and six letters), which stay: nothing about them
// says that their process is dead, since they were not locked, and the process may be one of another machine.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "io/bytes.h"

namespace riders::io {

// How the names of what is written beside a file begin, until it is put in place.
inline constexpr std::string_view kOutputLitter = ".riders-out-";

// The beginning and 16 random digits.
std::string unguessableName(std::string_view beginning);

struct Temporary {
    std::filesystem::path path;
    OpenFile file;  // locked
};

// A new file or folder in the folder, under such a name. `make` makes and opens what has that path, or returns -1
// and leaves errno and nothing else. Throws Refusal, with `shown` for the name.
Temporary newTemporary(const std::filesystem::path &folder, std::string_view beginning,
                       int (*make)(const char *path), const std::string &shown);

// Removes the files and folders in the folder that have such a name, belong to the user, and are locked by
// nobody: the process that made them is dead. What cannot be removed stays.
void removeDead(const std::filesystem::path &folder, std::string_view beginning);

}  // namespace riders::io
