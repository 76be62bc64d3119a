// Which options a job is sent with so that each dot arrives.
#pragma once

#include <string>
#include <vector>

#include "film/printing/queue.h"

namespace riders::printing {

// Those that keep dots, and those that the person asked for. Throws Refusal where one that was asked for would
// spoil dots, or belongs to an option of the command.
std::vector<JobOption> keepingOptions(const Queue &queue, const std::vector<JobOption> &asked);

}  // namespace riders::printing
