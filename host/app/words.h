// What the program says, from its resource fork, and where it says it.
#pragma once

#include <string>

#include "toolbox/dialogs.h"

namespace riders::app {

// Numbers in 'STR#' 1000.
enum class Words { notStated = 1, inThisJob, none, saveWith, saveWithout, endingWith, endingWithout };
// UTF-8.
std::string words(Words which);

// The top left corner, global, with which the 'DLOG' or 'ALRT' (as the type says) lies
// in the middle of the main display, a third of the free height down.
Point centered(ResType type, int id);

// Shows what went wrong, UTF-8, and waits for OK.
void showProblem(const std::string &text);

}  // namespace riders::app
