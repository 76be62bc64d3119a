// The plug-in's commands, called so that what they write is wholly there or not at all.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "io/replacement.h"
#include "plugin/plugin.h"
#include "settings/working_copy.h"
#include "toolbox/host/save_place.h"

namespace riders::keeping {

// The plug-in makes its file in a hidden folder beside where it belongs, and works on a copy of the saved settings;
// both are put in place when they are complete.
class Keeper {
public:
    // Receives what could not be put in place, and why: UTF-8, one line. Called before the plug-in or after it.
    using Say = std::function<void(const std::string &problem)>;

    // The plug-in must outlive it.
    Keeper(plugin::Plugin &plugin, Say say);

    // As Plugin::call, for what is not idle time. Exceptions pass through: then nothing is put in
    // place.
    void call(int selector, int command = 0);
    // The file that the last call has put in place; empty where it made none.
    const std::filesystem::path &lastMade() const { return lastMade_; }

private:
    bool settingsReady();
    toolbox::SavePlace placeFor(const std::filesystem::path &file);
    void putInPlace();
    void keepSettings();

    plugin::Plugin &plugin_;
    Say say_;
    std::string settingsName_;
    std::optional<settings::WorkingCopy> settings_;
    std::optional<io::Replacement> made_;
    std::filesystem::path placed_, lastMade_;
};

}  // namespace riders::keeping
