// The command that removes a riders file.
#pragma once

#include "toolbox/types.h"

// Asks for a file and deletes it if it begins like a riders file; refusals and
// failures are reported. 1: the user cancelled; 0: deleted; else what failed.
int16_t RemoveRiders();
