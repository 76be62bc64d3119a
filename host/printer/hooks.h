// What PAPPL reaches without handing anything over.
#pragma once

#include "printer/job_line.h"

namespace riders::printer {

// The line of this process, from the moment at which it is complete; nullptr before.
extern JobLine *gJobLine;

}  // namespace riders::printer
