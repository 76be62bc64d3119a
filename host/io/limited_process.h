// Runs a program in its own process group, within limits, and ends it cleanly.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "io/beside.h"

namespace riders::io {

struct LimitedRun {
    std::vector<std::string> command;  // the program is found in PATH
    std::filesystem::path folder;      // its current folder
    std::filesystem::path temporary;   // in that folder: where it makes temporary files
    int seconds = 300;  // of silence allowed; each line for which `line` returns true starts the time anew
    int secondsInAll = 30000;
    int megabytes = 2048;            // of address space
    int temporaryMegabytes = 256;    // of files in `temporary`
    int folderMegabytes = 16 << 10;  // of files in `folder`, at a time
    // Called for each line that it writes on standard output or error; true where it shows progress.
    std::function<bool(std::string_view)> line;
    Beside *beside = nullptr;  // what else it gives, if anything; used by the calling thread
};

enum class RunEnd { exited, timedOut, tookTooLong, wroteTooMuch, filledFolder, killed };

struct LimitedResult {
    RunEnd end = RunEnd::exited;
    int status = 0;  // exit code, or the signal that killed it
};

// Waits for the program to end. It has no input. When too much time has
// passed, too much is written, a signal has come (see Interruption) or a call throws, it is killed with
// everything it started; it also dies with this process. Throws Refusal when it cannot
// be started, Interrupted, or what `line` or `beside` throws. May be called on several threads at once; a thread
// must last as long as its program.
LimitedResult runLimited(const LimitedRun &run);

}  // namespace riders::io
