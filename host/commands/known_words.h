// The words that can stand for values on the command line and are known only when they are asked for.
#pragma once

#include <vector>

#include "describing/value_kinds.h"

namespace riders::commands {

// Dot shapes, sets of screens, plates, print queues, and what the plug-in's menus offer. What cannot be read has
// no words.
std::vector<describing::KnownWords> knownWords();

}  // namespace riders::commands
