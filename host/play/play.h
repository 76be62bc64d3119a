// `riders play`: a scripted person with the host, on the headless machine.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "play/displays.h"
#include "toolbox/host/headless.h"
#include "toolbox/host/session.h"

namespace riders::play {

struct PlayRequest {
    std::filesystem::path script;
    std::filesystem::path plugin;
    std::filesystem::path traceFile;       // empty: no trace
    bool force = false;                    // its file may be something else than a trace
    std::filesystem::path picturesFolder;  // empty: the current folder
    toolbox::Configuration configuration;
    std::vector<toolbox::Display> displays;
    // The machine that the scripted person uses; a HeadlessMachine with those displays
    // unless set.
    std::function<std::unique_ptr<toolbox::HeadlessMachine>(const std::vector<toolbox::Display> &)> seat;
};

// Plays the script to its end. Returns the message for standard error, empty
// when the session went as the script says: "session.play:12: no dialog is
// open". The trace is written either way.
std::string play(const PlayRequest &request);

}  // namespace riders::play
