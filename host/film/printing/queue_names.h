// Which queues there are.
#pragma once

#include <string>
#include <vector>

namespace riders::printing {

// Their names, as --printer takes them, in alphabetical order. Throws Refusal where there is no print server.
std::vector<std::string> queueNames();

}  // namespace riders::printing
