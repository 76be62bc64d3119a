#include "commands/mistakes.h"

#include <algorithm>

#include "io/nearest.h"

namespace riders::commands {
namespace {

std::string optionMeant(CLI::App &command, const std::vector<std::string> &words)
{
    std::vector<std::string> names;
    for (const CLI::Option *option : command.get_options())
        for (const std::string &name : option->get_lnames())
            names.push_back("--" + name);
    for (const std::string &word : words) {
        const std::string option = word.substr(0, word.find('='));
        if (!option.starts_with("--") || option.size() < 3 || command.get_option_no_throw(option) != nullptr)
            continue;
        if (const std::string meant = io::nearest(option, names); !meant.empty())
            return meant;
    }
    return {};
}

}  // namespace

std::string meantBy(CLI::App &app, const std::vector<std::string> &words)
{
    std::vector<std::string> names;
    for (const CLI::App *command : app.get_subcommands({}))
        names.push_back(command->get_name());
    const bool known = words.empty() || std::find(names.begin(), names.end(), words.front()) != names.end();
    // A later word may have been taken for the command.
    if (const std::string command = known ? "" : io::nearest(words.front(), names); !command.empty())
        return "Did you mean riders " + command + "?\n";
    const std::vector<CLI::App *> chosen = app.get_subcommands();
    const std::string option = chosen.empty() ? "" : optionMeant(*chosen.front(), words);
    return option.empty() ? "" : "Did you mean " + option + "?\n";
}

}  // namespace riders::commands
