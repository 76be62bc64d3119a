// Where the command line looks for sets of screens.
#pragma once

#include "screens/set_names.h"

namespace riders::commands {

screens::SetFolders setFolders();

}  // namespace riders::commands
