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

    struct Once {
        // Fills the settings file that it is given, which the plug-in has written from the user's.
        std::function<void(const std::filesystem::path &settings)> prepare;
        // Gets the file that was made before it is put in place.
        std::function<void(const std::filesystem::path &made)> finish;
    };
    // The settings dialog on other settings than the user's, which stay as they are, whatever is chosen. What the
    // two throw as io::Refusal is said, and nothing is put in place.
    void callOnce(const Once &once);

    // What the plug-in's save dialog proposes from now on; empty: what the plug-in does.
    void propose(std::filesystem::path file) { proposed_ = std::move(file); }
    // The file that the last call has put in place; empty where it made none.
    const std::filesystem::path &lastMade() const { return lastMade_; }

private:
    bool settingsReady();
    toolbox::SavePlace placeFor(const std::filesystem::path &file);
    void begin();
    void callOnCopy(const std::filesystem::path &settings, const Once &once);
    void putInPlace(const std::function<void(const std::filesystem::path &made)> &finish);
    void keepSettings();

    plugin::Plugin &plugin_;
    Say say_;
    std::string settingsName_;
    std::optional<settings::WorkingCopy> settings_;
    std::optional<io::Replacement> made_;
    std::filesystem::path placed_, lastMade_, proposed_;
};

}  // namespace riders::keeping
