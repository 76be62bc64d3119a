// What shells and the build ask the program about its command line. It is not in the help: nobody types it.
//
//     riders --complete-line WORD...
//         What can come next after "riders WORD...", of which the last is not finished (describing/completion.h).
//     riders --write-manual TEXTS PAGES DATE
//         Makes the manual pages (describing/manual_page.h).
#pragma once

#include <CLI/CLI.hpp>

#include <optional>
#include <string>
#include <vector>

namespace riders::commands {

// Nothing where the words, those after the program's name, ask for something else; otherwise what went wrong,
// which is empty when all went well.
std::optional<std::string> describe(CLI::App &app, const std::vector<std::string> &words);

}  // namespace riders::commands
