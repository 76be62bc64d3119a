// What shells, the build and users ask the program about itself. But for --version it is not in the help.
//
//     riders-printer --complete-line WORD...
//         What can come next after "riders printer WORD...", of which the last is not finished.
//     riders-printer --write-manual TEXTS PAGES DATE
//         Makes its manual page.
#pragma once

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace riders::printer {

// As in 1.0.
extern const char *const kVersion;

// False where the words, those after the program's name, ask for something else. Throws io::Refusal.
bool describe(CLI::App &app, const std::vector<std::string> &words);

}  // namespace riders::printer
