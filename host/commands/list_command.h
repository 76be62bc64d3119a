// The command line of `riders list`.
#pragma once

#include <CLI/CLI.hpp>

#include "commands/chosen.h"

namespace riders::commands {

void addList(CLI::App &app, Chosen &chosen);

}  // namespace riders::commands
