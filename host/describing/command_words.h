// The words of the command line: what its help says, in parts, for manual pages and for shells.
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace riders::describing {

// An option, or an operand: what stands on the command line by its place alone.
struct OptionWords {
    std::vector<std::string> names;    // as they are typed, short ones first: -o, --output; an operand's only name
    std::string value;                 // what stands for its value: FILE; empty where it takes none
    std::vector<std::string> choices;  // where its value is one of these
    std::string range;                 // where its value is a number between two: 1 to 3600
    std::string about;
    bool required = false;
    bool repeated = false;  // may be given again
    // The names of options without which it is refused, and of those with which it is.
    std::vector<std::string> needs, excludes;
};

struct CommandWords {
    std::string name, about;
    std::vector<OptionWords> options, operands;
    std::vector<CommandWords> commands;
    // What follows is for another program, which describes itself.
    bool isAnotherProgram = false;
};

// Those of the program, and so on down its commands. What its help hides is left out.
CommandWords wordsOf(CLI::App &app);

}  // namespace riders::describing
