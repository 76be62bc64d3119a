// What a riders file chooses, for programs.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "reading/choices.h"

namespace riders::commands {

// An object, which begins with these members.
std::string choicesInJson(const reading::Choices &choices,
                          std::vector<std::pair<std::string, std::string>> members);

}  // namespace riders::commands
