// The command that removes a riders file.
#pragma once

#include "toolbox/types.h"

// Asks for a file and deletes it if it begins like a riders file, without another
// question: the dialog's button reads "Remove". Refusals and failures are reported.
// 1: the user cancelled; 0: deleted, or no riders file; otherwise the error.
int16_t RemoveRiders();
