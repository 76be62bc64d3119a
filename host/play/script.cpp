#include "play/script.h"

#include <sstream>

#include "toolbox/host/user.h"

namespace riders::play {
namespace {

char escaped(char letter, int line)
{
    switch (letter) {
    case 'n':
        return '\n';
    case 'r':
        return '\r';
    case 't':
        return '\t';
    case '"':
        return '"';
    case '\\':
        return '\\';
    }
    throw toolbox::ScriptError{line, std::string("unknown escape \\") + letter};
}

// Reads a quoted text that starts at position; leaves position after it.
std::string quotedWord(const std::string &line, std::size_t &position, int number)
{
    std::string word;
    for (++position; position < line.size(); ++position) {
        if (line[position] == '"') {
            ++position;
            return word;
        }
        if (line[position] == '\\' && position + 1 < line.size())
            word += escaped(line[++position], number);
        else
            word += line[position];
    }
    throw toolbox::ScriptError{number, "a quote is not closed"};
}

ScriptLine parted(const std::string &line, int number)
{
    ScriptLine parts{number, {}, {}};
    std::size_t position = 0;
    while (position < line.size() && line[position] != '#') {
        if (line[position] == ' ' || line[position] == '\t' || line[position] == '\r') {
            ++position;
            continue;
        }
        parts.quoted.push_back(line[position] == '"');
        if (parts.quoted.back()) {
            parts.words.push_back(quotedWord(line, position, number));
        } else {
            std::size_t end = line.find_first_of(" \t\r\"", position);
            end = end == std::string::npos ? line.size() : end;
            parts.words.push_back(line.substr(position, end - position));
            position = end;
        }
    }
    return parts;
}

}  // namespace

std::vector<ScriptLine> splitScript(const std::string &text)
{
    std::vector<ScriptLine> lines;
    std::istringstream in(text);
    in.exceptions(std::ios::badbit);  // a lack of memory is not the end of the script
    std::string line;
    for (int number = 1; std::getline(in, line); ++number)
        if (ScriptLine parts = parted(line, number); !parts.words.empty())
            lines.push_back(std::move(parts));
    return lines;
}

}  // namespace riders::play
