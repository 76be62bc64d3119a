// The command line of `riders screens`.
#pragma once

#include <CLI/CLI.hpp>

#include "commands/chosen.h"

namespace riders::commands {

void addScreens(CLI::App &app, Chosen &chosen);

}  // namespace riders::commands
