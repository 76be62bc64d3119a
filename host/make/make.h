// `riders make`: the plug-in's own dialogs, filled in without a display.
#pragma once

#include <string>

#include "make/request.h"

namespace riders::make {

// Makes the riders file. Returns the message for standard error, empty when it
// was made; otherwise nothing was written and an old file is as it was.
std::string make(const MakeRequest &request);

}  // namespace riders::make
