// Where the steps of one session act.
#pragma once

#include <filesystem>
#include <memory>

#include "keeping/keeper.h"
#include "play/film.h"
#include "plugin/plugin.h"
#include "toolbox/host/headless.h"
#include "toolbox/host/user.h"

namespace riders::play {

struct Stage {
    toolbox::ScriptedUser &user;
    plugin::Plugin &plugin;
    keeping::Keeper &keeper;
    std::filesystem::path picturesFolder;
    toolbox::HeadlessMachine &machine;
    std::filesystem::path program;  // whose resource fork the window needs
    // What is being filmed, and the file it goes to; nil between films.
    std::unique_ptr<Film> film = nullptr;
    std::filesystem::path filmFile = {};
};

}  // namespace riders::play
