// Temporary files and folders that a killed process leaves, and how the next one knows them.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace riders::io {

// How the names of what is written beside a file begin, until it is put in place.
inline constexpr std::string_view kOutputLitter = ".riders-out-";

// The beginning and 16 random digits.
std::string unguessableName(std::string_view beginning);

// Locks an open file or folder for as long as this process has it open. False when it was removed before that,
// as litter: make another.
bool lockAsAlive(int descriptor, const std::filesystem::path &path);

// Removes the files and folders in the folder that have such a name, belong to the user, and are locked by
// nobody: the process that made them is dead. What cannot be removed stays.
void removeDead(const std::filesystem::path &folder, std::string_view beginning);

}  // namespace riders::io
