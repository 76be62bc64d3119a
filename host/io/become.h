// Going on as another program.
#pragma once

#include <string>
#include <vector>

namespace riders::io {

// This process becomes that program, whose path is the first word, with the rest for arguments; it keeps its open
// standard files, folder and environment. Throws Refusal where that is not possible.
[[noreturn]] void becomeProgram(std::vector<std::string> words);

}  // namespace riders::io
