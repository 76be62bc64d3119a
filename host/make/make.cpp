#include "make/make.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <new>
#include <optional>
#include <system_error>

#include "apply/earlier_file.h"
#include "io/bytes.h"
#include "io/output.h"
#include "io/private_folder.h"
#include "io/refusal.h"
#include "make/answers.h"
#include "make/bare_riders.h"
#include "plugin/plugin.h"
#include "screens/shapes.h"
#include "settings/saved_settings.h"
#include "toolbox/host/failed_changes.h"
#include "toolbox/host/folders.h"
#include "toolbox/host/session.h"
#include "toolbox/host/text.h"
#include "toolbox/host/user.h"
#include "toolbox/host/utf8.h"

namespace riders::make {
namespace {

std::string checkOutput(const std::filesystem::path &output, bool force)
{
    std::error_code ignored;
    if (output.empty())
        return "name a file for the riders";
    if (output.filename().empty() || std::filesystem::is_directory(output, ignored))
        return output.string() + " is a folder; name a file for the riders";
    const std::filesystem::file_status old = std::filesystem::status(output, ignored);
    if (std::filesystem::exists(old) && !std::filesystem::is_regular_file(old))
        return output.string() + " is not an ordinary file; name another one for the riders";
    if (std::filesystem::exists(old) &&
        (old.permissions() & std::filesystem::perms::owner_write) == std::filesystem::perms::none)
        return output.string() + " may not be changed; name another file for the riders";
    std::filesystem::path folder = std::filesystem::absolute(output).parent_path();
    if (!std::filesystem::is_directory(folder, ignored))
        return "there is no folder " + folder.string() + " to make " + output.filename().string() + " in";
    if (!force)
        apply::refuseUnlessRiders(output);
    if (output.filename().string().find(':') != std::string::npos)
        return "the name of a riders file cannot hold a colon: " + output.filename().string();
    return {};
}

// An empty field would count as 0.
std::string checkNumber(const char *option, const std::optional<std::string> &value)
{
    if (value && value->find_first_not_of("., ") == std::string::npos)
        return std::string("name a number with ") + option;
    return {};
}

std::string checkNumbers(const MakeRequest &request)
{
    for (const auto &[option, value] : {std::pair("--frequency", request.frequency),
                                        {"--angle", request.angle},
                                        {"--flatness", request.flatness},
                                        {"--size", request.size}})
        if (std::string problem = checkNumber(option, value); !problem.empty())
            return problem;
    return {};
}

// Single plates' screens are not among the settings.
std::string checkSettings(const MakeRequest &request)
{
    if (request.saveSettings && !request.plates.empty() && !choosesForAll(request))
        return "--save-settings has nothing to keep: the screens of single plates are not among the settings";
    return {};
}

// The first character that has no place in the plug-in's text, by name.
std::string checkAnnotation(const std::string &annotation)
{
    for (std::size_t at = 0; at < annotation.size();) {
        const std::size_t next = toolbox::endOfCharacter(annotation, at);
        std::string character = annotation.substr(at, next - at);
        if (!toolbox::romanFromUtf8(character) && !toolbox::romanFromUtf8(annotation.substr(0, next)))
            return "an annotation cannot hold \"" + character + "\": it has no place in Mac OS Roman";
        at = next;
    }
    return {};
}

// The folders that the plug-in works in: nothing that it does there can harm what the user has.
struct Workplace {
    Workplace()
    {
        std::filesystem::create_directory(made.parent_path());
        std::filesystem::create_directory(spots);
        std::filesystem::create_directory(settings);
    }

    io::PrivateFolder folder;
    std::filesystem::path made = folder.path() / "made" / "riders";
    std::filesystem::path spots = folder.path() / "spots";
    std::filesystem::path settings = folder.path() / "settings";
};

// The file to import where the menu does not have the dot shape. An installed one, or one of a set, is copied to
// where dialogs find it, wherever the program or the set is, by a name that is not hidden.
std::filesystem::path spotFile(const MakeRequest &request, const Workplace &place)
{
    if (!request.spot)
        return {};
    const auto shape =
        request.spotOfSet ? screens::shapeNamed(*request.spot) : screens::installedShape(*request.spot);
    if (!shape)
        return *request.spot;
    const std::string name = shape->file.filename();
    std::filesystem::path copy = place.spots / name.substr(std::min(name.find_first_not_of('.'), name.size() - 1));
    io::copyFile(shape->file, copy);
    return copy;
}

void callPlugin(plugin::Plugin &plugin, toolbox::ScriptedUser &user, Answers &answers, Made &made)
{
    try {
        plugin.call(kSelectCommand, kCommandSettings);
        user.run();
    } catch (const toolbox::ProcessEnded &) {
        made.problem = "the plug-in ended the process";
    } catch (const toolbox::ScriptError &error) {
        made.problem = error.message;
    }
    if (!answers.refusal().empty())
        made.problem = answers.refusal();
    made.note = answers.warning();
}

// A companion without its file would pass what it says to the new one: it goes first, whatever happens then.
void putInPlace(const std::filesystem::path &made, const std::filesystem::path &output)
{
    std::error_code ignored;
    const bool isNew = std::filesystem::status(output, ignored).type() == std::filesystem::file_type::not_found;
    if (isNew)
        std::filesystem::remove(output.parent_path() / ("._" + output.filename().string()), ignored);
    io::copyFile(made, output);
}

// The name of the spot function file; empty for a dot shape that comes with the program.
std::string ownShapeOf(const MakeRequest &request)
{
    if (!request.spot || screens::installedShape(*request.spot))
        return {};
    std::error_code failed;
    const std::filesystem::file_status status = std::filesystem::status(*request.spot, failed);
    if (status.type() == std::filesystem::file_type::none)
        io::refuseErrno(*request.spot, failed.value());
    if (!std::filesystem::exists(status))
        return {};
    return std::filesystem::path(*request.spot).filename();
}

// No dialog has the screens of single plates, and the plug-in writes no names: they are written into the file that
// it has made.
void addToMade(const std::filesystem::path &made, const MakeRequest &request)
{
    const std::string ownShape = ownShapeOf(request);
    if (request.plates.empty() && ownShape.empty())
        return;
    std::string riders = io::contentsOf(made);
    if (!request.plates.empty() && !choosesForAll(request))
        riders = withoutStandIn(std::move(riders));
    io::writeFile(made, withShapeNames(withPlates(std::move(riders), request.plates), ownShape, request.plates));
}

void keepSettings(const settings::SavedSettings &saved, const Workplace &place, Made &made)
{
    try {
        if (OSErr failed = toolbox::firstFailedChange())
            throw io::Refusal("the copy of them in " + place.settings.string() + " could not be written (" +
                              std::to_string(failed) + ")");
        saved.takeFrom(place.settings);
    } catch (const io::Refusal &refusal) {
        made.problem = "the riders file is made, but its choices are not saved: " + refusal.message;
    }
}

void useDialogs(toolbox::HeadlessMachine &machine, const MakeRequest &request, const Workplace &place, Made &made)
{
    toolbox::ScriptedUser user(machine);
    plugin::Plugin plugin(request.plugin);
    const MakeRequest asked = request.plates.empty() || choosesForAll(request) ? request : withStandIn(request);
    Answers answers(user, asked, place.made, spotFile(request, place));
    answers.queue();
    const settings::SavedSettings saved(toolbox::folders::usersPreferences(), plugin.settingsFileName());
    if (request.saveSettings)
        saved.copyTo(place.settings);
    callPlugin(plugin, user, answers, made);
    if (!made.problem.empty())
        return;
    addToMade(place.made, request);
    putInPlace(place.made, request.output);
    if (request.saveSettings)
        keepSettings(saved, place, made);
}

}  // namespace

Made make(const MakeRequest &request)
{
    for (const std::string &problem : {checkOutput(request.output, request.force), checkNumbers(request),
                                       checkAnnotation(request.annotation.value_or("")), checkSettings(request)})
        if (!problem.empty())
            return {problem, {}};
    const Workplace place;
    toolbox::Configuration configuration;
    configuration.preferencesFolder = place.settings;
    toolbox::HeadlessMachine machine;
    machine.wantPictures(false);
    toolbox::start(configuration, machine);
    Made made;
    try {
        useDialogs(machine, request, place, made);
    } catch (const std::bad_alloc &) {
        toolbox::stop();
        throw;
    } catch (const std::exception &error) {
        made.problem = error.what();
    }
    toolbox::stop();
    return made;
}

}  // namespace riders::make
