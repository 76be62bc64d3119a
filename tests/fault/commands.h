// The commands that are tried with every fault, a row for each.
#pragma once

#include <ostream>
#include <string>
#include <vector>

struct TriedCommand {
    const char *name;
    std::vector<std::string> arguments;            // for `riders`, which runs in the folder `work`
    std::vector<std::vector<std::string>> before;  // what ran there earlier, without a fault
    std::string input = {};                        // a file in `work`; long.ps is made from job.ps
    bool piped = false;                            // standard input and output are pipes
    // What is not compared: a trace shows how far a session came, and a session undoes nothing.
    std::vector<std::string> unfinished = {};
};

const std::vector<TriedCommand> &triedCommands();

// The name, for GoogleTest.
void PrintTo(const TriedCommand &command, std::ostream *out);
