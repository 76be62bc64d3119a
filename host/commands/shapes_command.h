// The command line of `riders shapes`.
#pragma once

#include <CLI/CLI.hpp>

#include "commands/chosen.h"

namespace riders::commands {

void addShapes(CLI::App &app, Chosen &chosen);

}  // namespace riders::commands
