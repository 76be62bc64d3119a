// What somebody probably meant whose command line is wrong.
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace riders::commands {

// A line with its end that names the command or option that a word of the command line is nearly; empty where none
// is. For an app that has just refused these words.
std::string meantBy(CLI::App &app, const std::vector<std::string> &words);

}  // namespace riders::commands
