// The command line of `riders make`.
#pragma once

#include <CLI/CLI.hpp>

#include "commands/chosen.h"

namespace riders::commands {

void addMake(CLI::App &app, Chosen &chosen);

}  // namespace riders::commands
