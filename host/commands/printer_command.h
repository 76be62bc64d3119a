// The command line of `riders printer`: it becomes the program riders-printer, which has its options.
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

#include "commands/chosen.h"

namespace riders::commands {

void addPrinterCommand(CLI::App &app, Chosen &chosen);

// Becomes that program with those words after its name. Returns, or throws io::Refusal, where it is not there.
void becomePrinterIfThere(const std::vector<std::string> &arguments);

}  // namespace riders::commands
