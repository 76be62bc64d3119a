#include "commands/preset_lines.h"

#include <algorithm>

namespace riders::commands {
namespace {

constexpr std::string_view kBlanks = " \t\r";

std::string_view trimmed(std::string_view text)
{
    const std::size_t start = std::min(text.find_first_not_of(kBlanks), text.size());
    return text.substr(start, text.find_last_not_of(kBlanks) + 1 - start);
}

// Without the quotation marks around it.
std::string_view bare(std::string_view value)
{
    const bool quoted = value.size() >= 2 && (value[0] == '"' || value[0] == '\'') && value.back() == value[0];
    return quoted ? value.substr(1, value.size() - 2) : value;
}

std::string optionCalled(std::string_view name)
{
    if (name.starts_with('-'))
        return std::string(name);
    return (name.size() == 1 ? "-" : "--") + std::string(name);
}

std::string commandIn(std::string_view line, const std::string &from)
{
    if (!line.ends_with(']') || trimmed(line.substr(1, line.size() - 2)).empty())
        throw WrongPreset(from + ": expected a command in brackets, as in [film]");
    return std::string(trimmed(line.substr(1, line.size() - 2)));
}

Preset presetIn(std::string_view line, const std::string &from, const std::string &command)
{
    const std::size_t equals = std::min(line.find('='), line.size());
    const std::string_view name = trimmed(line.substr(0, equals));
    if (name.empty() || name.find_first_of(" \t\"'") != name.npos)
        throw WrongPreset(from + ": expected NAME = VALUE, as in dpi = 2400");
    Preset preset{from, command, optionCalled(name), {}};
    if (equals < line.size())
        preset.value = bare(trimmed(line.substr(equals + 1)));
    return preset;
}

}  // namespace

std::vector<Preset> presetsInText(std::string_view text, const std::string &file)
{
    std::vector<Preset> presets;
    std::string command;
    for (std::size_t number = 1; !text.empty(); ++number) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = trimmed(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        const std::string from = file + ":" + std::to_string(number);
        if (line.empty() || line[0] == '#' || line[0] == ';')
            continue;
        if (line[0] == '[')
            command = commandIn(line, from);
        else
            presets.push_back(presetIn(line, from, command));
    }
    return presets;
}

std::vector<std::string> quotedWords(std::string_view text, const std::string &from)
{
    std::vector<std::string> words;
    char quote = 0;
    bool inWord = false;
    for (const char c : text) {
        const bool blank = quote == 0 && (c == ' ' || c == '\t' || c == '\n');
        if (!blank && !inWord)
            words.emplace_back();
        inWord = !blank;
        if (blank)
            continue;
        if (quote == 0 && (c == '"' || c == '\''))
            quote = c;
        else if (quote == c)
            quote = 0;
        else
            words.back() += c;
    }
    if (quote != 0)
        throw WrongPreset(from + ": a quotation mark is not closed");
    return words;
}

}  // namespace riders::commands
