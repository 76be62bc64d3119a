// Run-length packing of one row.
#pragma once

#include <string>
#include <string_view>

namespace rescomp {

std::string packBits(std::string_view row);

}  // namespace rescomp
