// The command line of `riders film`.
#pragma once

#include <CLI/CLI.hpp>

#include "commands/chosen.h"

namespace riders::commands {

void addFilm(CLI::App &app, Chosen &chosen);

}  // namespace riders::commands
