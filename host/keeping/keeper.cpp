#include "keeping/keeper.h"

#include <utility>

#include "io/private_folder.h"
#include "io/refusal.h"
#include "toolbox/host/failed_changes.h"
#include "toolbox/host/folders.h"

namespace fs = std::filesystem;

namespace riders::keeping {
namespace {

constexpr char kNotSaved[] = "your choices are not saved: ";

// One without that text cannot do much, and keeps nothing under this name.
std::string settingsNameOf(const plugin::Plugin &plugin)
{
    const std::string name = plugin.settingsFileName();
    return name.empty() ? "settings" : name;
}

// Where the plug-in finds the settings and saves its file, for one call.
class Places {
public:
    Places(const fs::path &settings, toolbox::SavePlaceProc savePlace, const fs::path &proposed)
        : before_(toolbox::folders::preferences())
    {
        toolbox::folders::usePreferences(settings);
        toolbox::setSavePlace(std::move(savePlace));
        toolbox::proposeToSave(proposed);
    }
    ~Places()
    {
        toolbox::folders::usePreferences(before_);
        toolbox::setSavePlace({});
        toolbox::proposeToSave({});
    }
    Places(const Places &) = delete;

private:
    fs::path before_;
};

}  // namespace

Keeper::Keeper(plugin::Plugin &plugin, Say say)
    : plugin_(plugin), say_(std::move(say)), settingsName_(settingsNameOf(plugin))
{
}

void Keeper::begin()
{
    toolbox::forgetFailedChanges();
    made_.reset();
    lastMade_.clear();
}

void Keeper::call(int selector, int command)
{
    if (!settingsReady())
        return;
    begin();
    {
        const Places places(
            settings_->folder(), [this](const fs::path &file) { return placeFor(file); }, proposed_);
        plugin_.call(selector, command);
    }
    putInPlace({});
    keepSettings();
}

void Keeper::callOnce(const Once &once)
{
    begin();
    try {
        const io::PrivateFolder folder;
        settings::SavedSettings(toolbox::folders::preferences(), settingsName_).copyTo(folder.path());
        callOnCopy(folder.path(), once);
    } catch (const io::Refusal &refusal) {
        return say_(refusal.message);
    }
    putInPlace(once.finish);
}

// A command that there is not has the plug-in load the settings and write them as this version has them.
void Keeper::callOnCopy(const fs::path &settings, const Once &once)
{
    constexpr int noCommand = -1;
    const Places places(
        settings, [this](const fs::path &file) { return placeFor(file); }, proposed_);
    plugin_.call(kSelectCommand, noCommand);
    once.prepare(settings / settingsName_);
    plugin_.call(kSelectCommand, kCommandSettings);
}

// False when there is no place for a copy; without one nothing that the plug-in writes is safe.
bool Keeper::settingsReady()
{
    try {
        if (!settings_)
            settings_.emplace(settings::SavedSettings(toolbox::folders::preferences(), settingsName_));
    } catch (const io::Refusal &refusal) {
        say_(refusal.message);
        return false;
    }
    try {
        settings_->prepare();
    } catch (const io::Refusal &refusal) {
        say_("your saved settings cannot be read, and stay as they are: " + refusal.message);
    }
    return true;
}

// In a folder that may not be written to, the plug-in has words of its own for a file that is new there.
toolbox::SavePlace Keeper::placeFor(const fs::path &file)
{
    try {
        made_.emplace(file);
        placed_ = file;
        return {made_->folder(), {}};
    } catch (const io::Refusal &refusal) {
        std::error_code ignored;
        const bool isNew = fs::symlink_status(file, ignored).type() == fs::file_type::not_found;
        return {{}, isNew ? std::string() : refusal.message};
    }
}

void Keeper::putInPlace(const std::function<void(const fs::path &made)> &finish)
{
    if (!made_)
        return;
    std::string problem;
    try {
        if (made_->made()) {
            if (finish)
                finish(made_->folder() / placed_.filename());
            made_->finish();
            lastMade_ = placed_;
        }
    } catch (const io::Refusal &refusal) {
        problem = "the riders file is not saved: " + refusal.message;
    }
    made_.reset();
    if (!problem.empty())
        say_(problem);
}

void Keeper::keepSettings()
{
    if (const OSErr failed = toolbox::firstFailedChange(settingsName_)) {
        settings_->forget();
        say_(kNotSaved + std::string("their copy could not be written (") + std::to_string(failed) + ")");
        return;
    }
    try {
        settings_->keep();
    } catch (const io::Refusal &refusal) {
        say_(kNotSaved + refusal.message);
    }
}

}  // namespace riders::keeping
