#include "commands/standard_output.h"

#include <unistd.h>

#include <iostream>

#include "io/plain_text.h"

namespace riders::commands {
namespace {

constexpr const char *kNotWritten = "standard output cannot be written";

}  // namespace

std::string printLines(const std::string &lines)
{
    std::cout << (isatty(STDOUT_FILENO) != 0 ? io::plainLines(lines) : lines) << std::flush;
    return std::cout ? "" : kNotWritten;
}

std::string printPath(const std::filesystem::path &path)
{
    const std::string &bytes = path.native();
    std::cout << (isatty(STDOUT_FILENO) != 0 ? io::plainText(bytes) : bytes) << '\n' << std::flush;
    return std::cout ? "" : kNotWritten;
}

}  // namespace riders::commands
