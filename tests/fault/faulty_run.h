// Runs a program in which one system call fails, or several.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "fault/call_kinds.h"

// The nth call (from 1) of the kind fails, and `further` later ones.
struct Fault {
    long call;  // SYS_...
    Failure failure;
    int nth = 1;
    int further = 0;
};

struct FaultyCommand {
    std::vector<std::string> command;      // its first word is the program's path
    std::filesystem::path folder;          // the current one
    std::vector<std::string> environment;  // NAME=value, in addition to the test's own
    std::string input;
    bool piped = false;  // input and output are pipes, not files
};

struct FaultyRun {
    int status = 0;  // exit code, or the negative number of the signal that killed it
    std::string out, err;
    bool met = false;                         // a call has failed
    bool muted = false;                       // one that was to write on standard error
    std::map<long, int> calls;                // by kind; of runAndCount only
    std::vector<std::filesystem::path> made;  // every name under which it made a file or folder
};

constexpr int kSecondsARun = 10;

// A program that takes longer than kSecondsARun is killed by SIGALRM. Calls count from the moment that the
// program's main function ignores SIGXFSZ: what the loader does before is not the program's. They count in all its
// threads, and in the processes that it starts until those have become other programs.
FaultyRun runWithFault(const FaultyCommand &command, const std::optional<Fault> &fault);
FaultyRun runAndCount(const FaultyCommand &command);
