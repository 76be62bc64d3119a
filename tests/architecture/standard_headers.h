// The headers that every room may include.
#pragma once

#include <string>

namespace architecture {

// Whether it is a header of the C++ standard library, or one that it has from C.
bool isStandard(const std::string &header);

}  // namespace architecture
