#include "commands/standard_output.h"

#include <unistd.h>

#include <iostream>

#include "io/plain_text.h"

namespace riders::commands {

std::string printLines(const std::string &lines)
{
    std::cout << (isatty(STDOUT_FILENO) != 0 ? io::plainLines(lines) : lines) << std::flush;
    return std::cout ? "" : "standard output cannot be written";
}

}  // namespace riders::commands
