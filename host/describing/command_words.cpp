#include "describing/command_words.h"

#include <algorithm>
#include <regex>
#include <set>
#include <sstream>

#include <CLI/CLI.hpp>

namespace riders::describing {
namespace {

std::vector<std::string> validatorsOf(CLI::Option &option)
{
    std::vector<std::string> found;
    try {
        for (int index = 0;; ++index)
            if (const std::string about = option.get_validator(index)->get_description(); !about.empty())
                found.push_back(about);
    } catch (const CLI::OptionNotFound &) {
        return found;
    }
}

// CLI11 gives the word for a value only together with what its validators say.
std::string valueOf(CLI::Option &option, const std::vector<std::string> &validators)
{
    if (option.get_items_expected_max() == 0)
        return {};
    std::string value = option.get_type_name();
    for (auto about = validators.rbegin(); about != validators.rend(); ++about)
        if (value.ends_with(":" + *about))
            value.resize(value.size() - about->size() - 1);
    return value;
}

// From {up,down}.
std::vector<std::string> choicesFrom(const std::string &validator)
{
    std::vector<std::string> choices;
    if (!validator.starts_with('{') || !validator.ends_with('}'))
        return choices;
    std::istringstream inside(validator.substr(1, validator.size() - 2));
    for (std::string choice; std::getline(inside, choice, ',');)
        choices.push_back(choice);
    return choices;
}

// From INT in [1 - 3600].
std::string rangeFrom(const std::string &validator)
{
    static const std::regex form(R"(in \[(-?[0-9.]+) - (-?[0-9.]+)\])");
    std::smatch found;
    return std::regex_search(validator, found, form) ? found[1].str() + " to " + found[2].str() : "";
}

std::vector<std::string> namesOf(const CLI::Option &option)
{
    if (option.get_positional())
        return {option.get_name(true)};
    std::vector<std::string> names;
    for (const std::string &name : option.get_snames())
        names.push_back("-" + name);
    for (const std::string &name : option.get_lnames())
        names.push_back("--" + name);
    return names;
}

std::vector<std::string> longestNames(const std::set<CLI::Option *> &options)
{
    std::vector<std::string> names;
    for (const CLI::Option *option : options)
        names.push_back(namesOf(*option).back());
    std::sort(names.begin(), names.end());
    return names;
}

OptionWords wordsOf(CLI::Option &option)
{
    OptionWords words;
    const std::vector<std::string> validators = validatorsOf(option);
    words.names = namesOf(option);
    words.value = valueOf(option, validators);
    for (const std::string &validator : validators) {
        if (words.choices.empty())
            words.choices = choicesFrom(validator);
        if (words.range.empty())
            words.range = rangeFrom(validator);
    }
    words.about = option.get_description();
    words.required = option.get_required();
    words.repeated = option.get_items_expected_max() > 1;
    words.needs = longestNames(option.get_needs());
    words.excludes = longestNames(option.get_excludes());
    return words;
}

}  // namespace

CommandWords wordsOf(CLI::App &app)
{
    CommandWords words{app.get_name(), app.get_description(), {}, {}, {}, app.get_prefix_command()};
    for (CLI::Option *option : app.get_options())
        if (!option->get_group().empty())
            (option->get_positional() ? words.operands : words.options).push_back(wordsOf(*option));
    for (CLI::App *command : app.get_subcommands({}))
        if (!command->get_group().empty())
            words.commands.push_back(wordsOf(*command));
    return words;
}

}  // namespace riders::describing
