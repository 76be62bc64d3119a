// The command line of `riders show`.
#pragma once

#include <CLI/CLI.hpp>

#include "commands/chosen.h"

namespace riders::commands {

void addShow(CLI::App &app, Chosen &chosen);

}  // namespace riders::commands
