// What a riders file chooses, for people.
#pragma once

#include <string>
#include <vector>

#include "reading/choices.h"

namespace riders::reading {

// One for each choice, then what could not be read.
std::vector<std::string> choicesInLines(const Choices &choices);
// The same as a text, each line indented.
std::string choicesInWords(const Choices &choices);

}  // namespace riders::reading
