// Remembers what was opened. Private to Standard File.
#pragma once

#include "toolbox/host/opened_file.h"

namespace toolbox::standardfile {

void rememberOpened(OpenedFile file);

}  // namespace toolbox::standardfile
