// The dot shapes that a riders file holds.
#pragma once

#include <map>
#include <string>

namespace riders::film {

// The bodies of spot functions in the text of a riders file: by the plate that has one of its own, named by the
// ink's bytes; under an empty name that of all others.
std::map<std::string, std::string> shapesInRiders(const std::string &riders);

}  // namespace riders::film
