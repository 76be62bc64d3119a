// Options that a user always wants, put among the words of the command line.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "commands/preset_lines.h"

namespace riders::commands {

// The words after the program's name, completed: the options in RIDERS_OPTIONS that the command has, and those in
// riders.conf in the user's folder of settings. What is on the command line counts before both, RIDERS_OPTIONS
// before the file; an option that excludes one on the command line, or needs one that is not there, is left out.
// Throws WrongPreset for what no command has or takes, and io::Refusal where the file cannot be read.
std::vector<std::string> withPresets(std::vector<std::string> words);

// The same with that text of the environment and that file, which need not be there.
std::vector<std::string> withPresets(std::vector<std::string> words, const std::string &environment,
                                     const std::filesystem::path &file);

}  // namespace riders::commands
