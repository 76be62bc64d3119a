// The headers that every room may include.
#pragma once

#include <string>

namespace architecture {

// Of the C++ standard library, or of those it has from C.
bool isStandard(const std::string &header);

}  // namespace architecture
