// The command line of `riders proof`.
#pragma once

#include <CLI/CLI.hpp>

#include "commands/chosen.h"

namespace riders::commands {

void addProof(CLI::App &app, Chosen &chosen);

}  // namespace riders::commands
