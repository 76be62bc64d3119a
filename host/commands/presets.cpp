#include "commands/presets.h"

#include <algorithm>
#include <cstdlib>
#include <set>

#include <CLI/CLI.hpp>

#include "commands/commands.h"
#include "io/bytes.h"
#include "io/nearest.h"
#include "toolbox/host/folders.h"

namespace riders::commands {
namespace {

constexpr const char *kEnvironment = "RIDERS_OPTIONS";
constexpr std::size_t kLongestFile = 64 << 10;

bool isFlag(const CLI::Option &option)
{
    return option.get_items_expected_max() == 0;
}

std::vector<std::string> optionNames(CLI::App &command)
{
    std::vector<std::string> names;
    for (const CLI::Option *option : command.get_options())
        if (!option->get_positional())
            names.push_back(option->get_name());
    return names;
}

std::string textOf(const std::filesystem::path &file)
{
    std::error_code failed;
    const std::filesystem::file_status status = std::filesystem::status(file, failed);
    // Who may not look there has none.
    if (status.type() == std::filesystem::file_type::not_found || failed == std::errc::permission_denied)
        return {};
    const io::OpenFile in = io::openOrdinaryFile(file);
    std::string text(kLongestFile + 1, '\0');
    text.resize(io::readFully(in, text.data(), text.size()));
    if (text.size() > kLongestFile)
        throw WrongPreset(file.string() + ": is longer than " + std::to_string(kLongestFile) + " bytes");
    return text;
}

// An app with all commands, to ask what they have and take. Nothing is done.
class AllCommands {
public:
    AllCommands() : commands_(app_) { app_.name("riders"); }

    CLI::App *command(const std::string &name)
    {
        for (CLI::App *command : app_.get_subcommands({}))
            if (command->get_name() == name)
                return command;
        return nullptr;
    }
    // The command that these words choose, with its options as far as they are understood; null for none, and
    // where help is asked for.
    CLI::App *chosenBy(const std::vector<std::string> &words)
    {
        try {
            app_.parse(std::vector<std::string>(words.rbegin(), words.rend()));
        } catch (const CLI::ParseError &error) {
            if (error.get_exit_code() == 0)
                return nullptr;
        }
        const std::vector<CLI::App *> chosen = app_.get_subcommands();
        return chosen.empty() ? nullptr : chosen.front();
    }
    CLI::Option *optionOfAny(const std::string &name)
    {
        for (CLI::App *command : app_.get_subcommands({}))
            if (CLI::Option *option = command->get_option_no_throw(name))
                return option;
        return nullptr;
    }
    std::vector<std::string> commandNames()
    {
        std::vector<std::string> names;
        for (const CLI::App *command : app_.get_subcommands({}))
            names.push_back(command->get_name());
        return names;
    }
    std::vector<std::string> optionsOfAll()
    {
        std::vector<std::string> names;
        for (CLI::App *command : app_.get_subcommands({}))
            for (std::string &name : optionNames(*command))
                names.push_back(std::move(name));
        return names;
    }
    // What is wrong with the words, as far as that is not about others that are missing.
    std::string wrongWith(const std::vector<std::string> &words)
    {
        try {
            app_.parse(std::vector<std::string>(words.rbegin(), words.rend()));
        } catch (const CLI::RequiredError &) {
        } catch (const CLI::RequiresError &) {
        } catch (const CLI::ParseError &error) {
            return error.what();
        }
        return {};
    }

private:
    CLI::App app_;
    Commands commands_;
};

std::vector<Preset> presetsInEnvironment(const std::string &text, AllCommands &asked)
{
    std::vector<Preset> presets;
    const std::vector<std::string> words = quotedWords(text, kEnvironment);
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::size_t equals = words[i].starts_with("--") ? words[i].find('=') : std::string::npos;
        Preset preset{kEnvironment, {}, words[i].substr(0, equals), {}};
        if (!preset.option.starts_with('-'))
            throw WrongPreset(std::string(kEnvironment) + ": expected an option, not \"" + words[i] + "\"");
        if (equals != std::string::npos)
            preset.value = words[i].substr(equals + 1);
        else if (const CLI::Option *option = asked.optionOfAny(preset.option);
                 option != nullptr && !isFlag(*option)) {
            if (i + 1 == words.size())
                throw WrongPreset(std::string(kEnvironment) + ": " + preset.option + " needs a value");
            preset.value = words[++i];
        }
        presets.push_back(std::move(preset));
    }
    return presets;
}

void checkNames(const Preset &preset, AllCommands &asked)
{
    if (!preset.command.empty() && asked.command(preset.command) == nullptr)
        throw WrongPreset(preset.from + ": there is no command " + preset.command +
                          io::didYouMean(preset.command, asked.commandNames()));
    if (preset.command.empty() && asked.optionOfAny(preset.option) == nullptr)
        throw WrongPreset(preset.from + ": no command has the option " + preset.option +
                          io::didYouMean(preset.option, asked.optionsOfAll()));
    if (CLI::App *command = preset.command.empty() ? nullptr : asked.command(preset.command))
        if (command->get_option_no_throw(preset.option) == nullptr)
            throw WrongPreset(preset.from + ": riders " + preset.command + " has no option " + preset.option +
                              io::didYouMean(preset.option, optionNames(*command)));
}

bool isGiven(const CLI::Option *option)
{
    return option->count() > 0;
}

// Whether the command line leaves room for it.
bool hasPlace(CLI::Option &option, const std::vector<std::string> &others)
{
    const std::set<CLI::Option *> excluded = option.get_excludes(), needed = option.get_needs();
    const auto isThere = [&](const CLI::Option *one) {
        return isGiven(one) || std::find(others.begin(), others.end(), one->get_name()) != others.end();
    };
    return !isGiven(&option) && std::none_of(excluded.begin(), excluded.end(), isGiven) &&
           std::all_of(needed.begin(), needed.end(), isThere);
}

// As it is on the command line; nothing for a flag that is not wanted.
std::vector<std::string> wordsOf(const Preset &preset, const CLI::Option &option)
{
    if (!isFlag(option)) {
        if (preset.value.value_or("").empty())
            throw WrongPreset(preset.from + ": " + preset.option + " needs a value");
        if (preset.option.starts_with("--"))
            return {preset.option + "=" + *preset.value};
        return {preset.option, *preset.value};
    }
    const std::string value = preset.value.value_or("yes");
    if (value == "no" || value == "false" || value == "off")
        return {};
    if (value != "yes" && value != "true" && value != "on")
        throw WrongPreset(preset.from + ": " + preset.option + " is yes or no, not \"" + value + "\"");
    return {preset.option};
}

// Those that hold for the command, each option's from the source that counts.
std::vector<Preset> presetsFor(CLI::App &command, const std::vector<Preset> &all)
{
    std::vector<Preset> chosen;
    for (const Preset &preset : all) {
        CLI::Option *option = command.get_option_no_throw(preset.option);
        if (option == nullptr || option->get_name() == "--help" ||
            (!preset.command.empty() && preset.command != command.get_name()))
            continue;
        if (preset.from == kEnvironment || option->get_items_expected_max() <= 1)
            std::erase_if(chosen, [&](const Preset &earlier) {
                return command.get_option_no_throw(earlier.option) == option &&
                       (earlier.from != kEnvironment || option->get_items_expected_max() <= 1);
            });
        chosen.push_back(preset);
    }
    std::vector<std::string> names;
    for (const Preset &preset : chosen)
        names.push_back(command.get_option_no_throw(preset.option)->get_name());
    std::erase_if(chosen, [&](const Preset &preset) {
        return !hasPlace(*command.get_option_no_throw(preset.option), names);
    });
    return chosen;
}

}  // namespace

std::vector<std::string> withPresets(std::vector<std::string> words, const std::string &environment,
                                     const std::filesystem::path &file)
{
    std::vector<Preset> all = presetsInText(textOf(file), file);
    if (words.empty() || (all.empty() && environment.empty()))
        return words;
    AllCommands asked;
    for (Preset &preset : presetsInEnvironment(environment, asked))
        all.push_back(std::move(preset));
    for (const Preset &preset : all)
        checkNames(preset, asked);
    CLI::App *command = asked.chosenBy(words);
    if (command == nullptr)
        return words;
    const std::string name = command->get_name();
    std::vector<std::string> added;
    for (const Preset &preset : presetsFor(*command, all)) {
        std::vector<std::string> own = wordsOf(preset, *command->get_option_no_throw(preset.option));
        std::vector<std::string> tried = own;
        tried.insert(tried.begin(), name);
        if (const std::string wrong = own.empty() ? "" : asked.wrongWith(tried); !wrong.empty())
            throw WrongPreset(preset.from + ": " + wrong);
        added.insert(added.end(), own.begin(), own.end());
    }
    const auto at = std::find(words.begin(), words.end(), name);
    words.insert(at == words.end() ? at : at + 1, added.begin(), added.end());
    return words;
}

std::vector<std::string> withPresets(std::vector<std::string> words)
{
    const char *const environment = std::getenv(kEnvironment);
    return withPresets(std::move(words), environment == nullptr ? "" : environment,
                       toolbox::folders::usersPreferences() / "riders.conf");
}

}  // namespace riders::commands
