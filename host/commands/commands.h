// The command line: its commands, and what each calls.
#pragma once

#include <CLI/CLI.hpp>

#include <functional>
#include <string>

#include "apply/apply.h"
#include "make/make.h"
#include "play/play.h"
#include "proof/proof.h"

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
    void addMake(CLI::App &app);
    void addApply(CLI::App &app);
    void addStrip(CLI::App &app);
    void addPlay(CLI::App &app);
    void addProof(CLI::App &app);

    std::string name_;
    std::function<std::string()> chosen_;  // returns what went wrong, or nothing
    make::MakeRequest make_;
    play::PlayRequest play_;
    proof::ProofRequest proof_;
    std::string displays_ = "640x480x8";
    std::string decimal_ = ".";
    std::string systemVersion_ = "0x0755";
    bool noColor_ = false;
    std::string riders_, job_, output_;
    std::string shownJob_;
};

}  // namespace riders::commands
