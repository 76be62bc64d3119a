// The pieces of a riders file read straight from resources/, bypassing compiler,
// fork and Resource Manager.
#pragma once

#include <string>

#include "toolbox/types.h"

// The bytes of the file or files that resources/pieces.res names for 'TEXT' id.
std::string pieceBytes(int id);
