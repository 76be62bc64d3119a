// What each verb of a script does.
#pragma once

#include <filesystem>

#include "play/script.h"
#include "plugin/plugin.h"
#include "toolbox/host/user.h"

namespace riders {

// Where the steps of one session act.
struct Stage {
    toolbox::ScriptedUser &user;
    Plugin &plugin;
    std::filesystem::path picturesFolder;
};

// Queues the step. toolbox::ScriptError with its line for an unknown verb or
// arguments that do not fit it.
void queueStep(const ScriptLine &line, Stage &stage);

}  // namespace riders
