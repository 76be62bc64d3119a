// The dot shapes that are computed without the interpreter.
#pragma once

#include <optional>
#include <string>

#include "screening/thresholds.h"

namespace riders::tables {

// The name, as it is usually written, of a shape that is known by it: in any case; nothing for any other.
std::optional<std::string> builtInShape(const std::string &name);
// Of a shape by that name, as builtInShape returns it.
screening::SpotFunction formulaNamed(const std::string &name);

// The formula of a spot function that is, but for comments and blanks, one of those that come with the program, in
// its folder of shapes or in the dialogs; nothing for any other.
std::optional<screening::SpotFunction> formulaOf(const std::string &body);

}  // namespace riders::tables
