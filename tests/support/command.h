// Running the built program as a user does.
#pragma once

#include <string>
#include <vector>

struct CommandResult {
    int status = -1;   // exit code, or -1 when it did not exit by itself
    std::string out;
    std::string err;
};

// Runs `riders` of this build with the arguments, the given standard input and
// the given folder as the current one.
CommandResult runRiders(const std::vector<std::string> &arguments, const std::string &input = {},
                        const std::string &folder = {});
// The same for any program in PATH.
CommandResult runProgram(const std::vector<std::string> &command, const std::string &input = {},
                         const std::string &folder = {});
