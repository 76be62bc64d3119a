// What each verb of a script does.
#pragma once

#include "play/script.h"
#include "play/stage.h"

namespace riders::play {

// Queues the step. toolbox::ScriptError with its line for an unknown verb or
// arguments that do not fit it.
void queueStep(const ScriptLine &line, Stage &stage);

}  // namespace riders::play
