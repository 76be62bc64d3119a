// A page of tints, in PostScript: three flat ones and a wedge, to show what a riders file does.
#pragma once

#include <string_view>

namespace riders::viewing {

extern const std::string_view kTints;

}  // namespace riders::viewing
