// The command line of `riders play`.
#pragma once

#include <CLI/CLI.hpp>

#include "commands/chosen.h"
#include "play/play.h"

namespace riders::commands {

// The request must outlive the app: where the session takes place is decided by others.
void addPlay(CLI::App &app, Chosen &chosen, play::PlayRequest &play);

}  // namespace riders::commands
