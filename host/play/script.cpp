#include "play/script.h"

#include <sstream>

#include "toolbox/host/user.h"

namespace riders {
namespace {

char escaped(char letter, int line)
{
    switch (letter) {
    case 'n': return '\n';
    case 'r': return '\r';
    case 't': return '\t';
    case '"': return '"';
    case '\\': return '\\';
    }
    throw toolbox::ScriptError{line, std::string("unknown escape \\") + letter};
}

// Reads a quoted text that starts at position; leaves position behind it.
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

std::vector<std::string> wordsOf(const std::string &line, int number)
{
    std::vector<std::string> words;
    std::size_t position = 0;
    while (position < line.size() && line[position] != '#') {
        if (line[position] == ' ' || line[position] == '\t' || line[position] == '\r') {
            ++position;
        } else if (line[position] == '"') {
            words.push_back(quotedWord(line, position, number));
        } else {
            std::size_t end = line.find_first_of(" \t\r\"", position);
            end = end == std::string::npos ? line.size() : end;
            words.push_back(line.substr(position, end - position));
            position = end;
        }
    }
    return words;
}

}  // namespace

std::vector<ScriptLine> splitScript(const std::string &text)
{
    std::vector<ScriptLine> lines;
    std::istringstream in(text);
    std::string line;
    for (int number = 1; std::getline(in, line); ++number)
        if (auto words = wordsOf(line, number); !words.empty())
            lines.push_back({number, std::move(words)});
    return lines;
}

}  // namespace riders
