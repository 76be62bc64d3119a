// What each verb of a script does.
#pragma once

#include <filesystem>
#include <memory>

#include "play/film.h"
#include "play/script.h"
#include "plugin/plugin.h"
#include "toolbox/host/headless.h"
#include "toolbox/host/user.h"

namespace riders::play {

// Where the steps of one session act.
struct Stage {
    toolbox::ScriptedUser &user;
    plugin::Plugin &plugin;
    std::filesystem::path picturesFolder;
    toolbox::HeadlessMachine &machine;
    // What is being filmed, and the file it goes to; nil between films.
    std::unique_ptr<Film> film = nullptr;
    std::filesystem::path filmFile = {};
};

// Queues the step. toolbox::ScriptError with its line for an unknown verb or
// arguments that do not fit it.
void queueStep(const ScriptLine &line, Stage &stage);

}  // namespace riders::play
