// The command line of `riders printer`.
#pragma once

#include <CLI/CLI.hpp>

#include <memory>
#include <string>
#include <vector>

#include "printer/service_request.h"

namespace riders::printer {

struct CommandLine {
    ServiceRequest request;
    std::vector<std::string> queues;
    std::string queuesFile;
    std::string sandbox = "auto";
};

// Adds the options to the app, which reads them into the words; they must live as long.
void addOptions(CLI::App &app, CommandLine &words);

// What they ask for. Throws io::Refusal.
ServiceRequest requestFrom(const CommandLine &words);

}  // namespace riders::printer
