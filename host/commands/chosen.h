// The command that the command line chose.
#pragma once

#include <functional>
#include <string>

namespace riders::commands {

struct Chosen {
    std::string name;                  // as messages begin with it
    std::function<std::string()> run;  // returns what went wrong, or nothing
};

}  // namespace riders::commands
