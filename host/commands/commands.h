// The command line. Each command has a file here, whose function adds it to the app and keeps its request.
#pragma once

#include <CLI/CLI.hpp>

#include <string>

#include "commands/chosen.h"
#include "play/play.h"

namespace riders::commands {

class Commands {
public:
    // Adds the subcommands. The app must outlive it.
    explicit Commands(CLI::App &app);
    // Does what was asked for; false when it was refused or failed, which has
    // then been reported on standard error.
    bool run();
    // Where played sessions take place, when not on the headless machine.
    void seatPlayersAt(decltype(play::PlayRequest::seat) seat) { play_.seat = std::move(seat); }

private:
    Chosen chosen_{"riders", {}};
    play::PlayRequest play_;
    std::string shownJob_;
};

}  // namespace riders::commands
