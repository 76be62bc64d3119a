#include "make/make.h"

#include <functional>
#include <system_error>

#include "make/answers.h"
#include "make/preferences_folder.h"
#include "plugin/plugin.h"
#include "toolbox/host/session.h"
#include "toolbox/host/standardfile_folder.h"
#include "toolbox/host/text.h"
#include "toolbox/host/user.h"
#include "toolbox/host/utf8.h"

namespace riders::make {
namespace {

std::string checkOutput(const std::filesystem::path &output)
{
    std::error_code ignored;
    if (output.empty())
        return "name a file for the riders";
    if (output.filename().empty() || std::filesystem::is_directory(output, ignored))
        return output.string() + " is a folder; name a file for the riders";
    if (std::filesystem::exists(output, ignored) && !std::filesystem::is_regular_file(output, ignored))
        return output.string() + " is no ordinary file; name another one for the riders";
    std::filesystem::path folder = std::filesystem::absolute(output).parent_path();
    if (!std::filesystem::is_directory(folder, ignored))
        return "there is no folder " + folder.string() + " to make " + output.filename().string() + " in";
    if (output.filename().string().find(':') != std::string::npos)
        return "the name of a riders file cannot hold a colon: " + output.filename().string();
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

std::string answerAll(toolbox::HeadlessMachine &machine, const MakeRequest &request)
{
    toolbox::ScriptedUser user(machine);
    plugin::Plugin plugin(request.plugin);
    Answers answers(user, request);
    answers.queue();
    try {
        plugin.call(kSelectCommand, kCommandSettings);
        user.run();
    } catch (const toolbox::ProcessEnded &) {
        return answers.refusal().empty() ? "the plug-in ended the process" : answers.refusal();
    } catch (const toolbox::ScriptError &error) {
        return answers.refusal().empty() ? error.message : answers.refusal();
    }
    return answers.refusal();
}

}  // namespace

std::string make(const MakeRequest &request)
{
    if (std::string problem = checkOutput(request.output); !problem.empty())
        return problem;
    if (std::string problem = checkAnnotation(request.annotation.value_or("")); !problem.empty())
        return problem;
    PreferencesFolder preferences(request.saveSettings);
    toolbox::Configuration configuration;
    configuration.preferencesFolder = preferences.path();
    toolbox::HeadlessMachine machine;
    machine.wantPictures(false);
    toolbox::start(configuration, machine);
    std::string problem;
    try {
        toolbox::setStandardFileFolder(std::filesystem::absolute(request.output).parent_path());
        problem = answerAll(machine, request);
    } catch (const std::exception &error) {
        problem = error.what();
    }
    toolbox::stop();
    return problem;
}

}  // namespace riders::make
