#include "commands/version.h"

namespace riders::commands {

const char *const kVersion = RIDERS_VERSION;

}  // namespace riders::commands
