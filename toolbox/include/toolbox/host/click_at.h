// A click in place of the person, for hosts that let keys do what the mouse does.
#pragma once

#include "toolbox/types.h"

namespace toolbox {

// Queues a press and a release at the global point, behind what the person has done so far; the mouse counts as
// being there until it is moved. Between start and stop of the Toolbox.
void clickAt(Point where);

}  // namespace toolbox
