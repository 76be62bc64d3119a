// Numbers as people read them.
#pragma once

#include <string>

namespace riders::io {

// "45", "12.5", "62.13": at most `digits` digits after the point, no zeros at the end.
std::string decimal(double value, int digits);

}  // namespace riders::io
