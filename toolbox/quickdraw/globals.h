// QuickDraw's globals, which programs see as qd. Private to QuickDraw.
#pragma once

#include "toolbox/quickdraw.h"

namespace toolbox::quickdraw {

// The patterns, the arrow and the random seed as at the start; everything else
// zero.
void resetGlobals();

}  // namespace toolbox::quickdraw
