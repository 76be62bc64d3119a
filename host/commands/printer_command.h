// The command line of `riders printer`: it becomes the program riders-printer, which has its options.
#pragma once

#include <CLI/CLI.hpp>

#include "commands/chosen.h"

namespace riders::commands {

void addPrinterCommand(CLI::App &app, Chosen &chosen);

}  // namespace riders::commands
