// What a program changes in files, system call by system call, and what is left where it is killed at one of them.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

// What is opened as a file without a name, in a folder. Later changes of it show the number that the system gives
// it.
inline constexpr const char *kNameless = "#nameless";

struct FileChange {
    std::string call;             // "rename"
    std::filesystem::path path;   // of what it changes, or syncs
    std::filesystem::path named;  // the name that it gives to that: by rename and link
};

struct FollowedRun {
    std::vector<FileChange> changes;  // in their order
    int status = -1;                  // exit code; -1 where it did not exit by itself
    bool killed = false;              // at the change asked for, which is then the last
};

struct Followed {
    std::function<void()> program;  // run in a process of its own, which ends when this returns
    bool ofChildren = false;        // counts the changes made by programs that it starts, and not its own
    int killAt = 0;                 // the number of the change, from 1, at which it is killed instead of making it
};

// Follows the program and its threads to their end. Only changes of files and folders count: not those of pipes
// and devices.
FollowedRun follow(const Followed &followed);

// For `program`: becomes the program of that path, in the folder, without input and output.
std::function<void()> command(const std::vector<std::string> &words, const std::filesystem::path &folder);
