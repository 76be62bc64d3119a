// Which version this is.
#pragma once

namespace riders::commands {

// As in 1.0; CMakeLists.txt says it.
extern const char *const kVersion;

}  // namespace riders::commands
