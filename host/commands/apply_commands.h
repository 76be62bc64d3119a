// The command lines of `riders apply` and `riders strip`.
#pragma once

#include <CLI/CLI.hpp>

#include "commands/chosen.h"

namespace riders::commands {

void addApply(CLI::App &app, Chosen &chosen);
void addStrip(CLI::App &app, Chosen &chosen);

}  // namespace riders::commands
