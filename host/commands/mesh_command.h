// The command line of `riders mesh`.
#pragma once

#include <CLI/CLI.hpp>

#include "commands/chosen.h"

namespace riders::commands {

void addMesh(CLI::App &app, Chosen &chosen);

// An option that takes a number per inch, or per cm, such as 225 or 90/cm, within these limits.
CLI::Validator perInchBetween(double least, double most, const std::string &what);

}  // namespace riders::commands
