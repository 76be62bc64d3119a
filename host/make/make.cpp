#include "make/make.h"

#include <functional>
#include <system_error>

#include "make/answers.h"
#include "make/preferences_folder.h"
#include "plugin/plugin.h"
#include "toolbox/host/session.h"
#include "toolbox/host/standardfile_folder.h"
#include "toolbox/host/user.h"

namespace riders {
namespace {

std::string checkOutput(const std::filesystem::path &output)
{
    std::error_code ignored;
    std::filesystem::path folder = std::filesystem::absolute(output).parent_path();
    if (output.filename().empty() || std::filesystem::is_directory(output, ignored))
        return output.string() + " is a folder; name a file for the riders";
    if (!std::filesystem::is_directory(folder, ignored))
        return "there is no folder " + folder.string() + " to make " + output.filename().string() + " in";
    return {};
}

std::string answerAll(toolbox::HeadlessMachine &machine, const MakeRequest &request)
{
    toolbox::ScriptedUser user(machine);
    Plugin plugin(request.plugin);
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
    PreferencesFolder preferences(request.saveSettings);
    toolbox::Configuration configuration;
    configuration.preferencesFolder = preferences.path();
    toolbox::HeadlessMachine machine;
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

}  // namespace riders
