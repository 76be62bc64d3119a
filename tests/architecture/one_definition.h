// The one-definition rule over a whole program, which no compiler sees at once.
#pragma once

#include <string>
#include <vector>

#include "architecture/checks.h"

namespace architecture {

// Joins what the compiler kept of all these files' types, and returns what it
// says about types, functions and variables that differ from file to file. Those
// without an object are left out; none may be a second program's main file.
Findings differingDefinitions(const std::string &compiler, const std::string &top,
                              const std::vector<Compiled> &compiled);

}  // namespace architecture
