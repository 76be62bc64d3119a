// Comparing the names of resources.
#pragma once

#include <string_view>

namespace toolbox::resources {

// Without regard to case, with regard to accents. Mac OS Roman.
bool sameName(std::string_view one, std::string_view other);

}  // namespace toolbox::resources
