// The dot shapes that are computed without the interpreter.
#pragma once

#include <optional>
#include <string>

#include "screening/thresholds.h"

namespace riders::tables {

// The formula of a spot function that is, but for comments and blanks, one of those that come with the program, in
// its folder of shapes or in the dialogs; nothing for any other.
std::optional<screening::SpotFunction> formulaOf(const std::string &body);

}  // namespace riders::tables
