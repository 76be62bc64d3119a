// Files that come from standard input, for what reads a file more than once.
#pragma once

#include <filesystem>
#include <functional>
#include <initializer_list>
#include <string>

namespace riders::commands {

// On the command line this stands for standard input, or output.
inline constexpr const char *kStandardFile = "-";
// What such a file is called where a name is needed, as for that of the films.
inline constexpr const char *kStandardInputName = "stdin";

// Runs with the one of the paths that is "-" changed to a file with all that comes from standard input, which is
// removed afterwards; a refusal does not name that file. Throws io::Refusal, also where two of them are "-".
std::string withStandardInput(std::initializer_list<std::filesystem::path *> given,
                              const std::function<std::string()> &run);

// The path as apply and strip take it: "-" becomes empty.
std::filesystem::path standardFileOr(const std::filesystem::path &given);

}  // namespace riders::commands
