// Steps about the displays: what is kept of them as pictures, and what they are.
#pragma once

#include "play/arguments.h"
#include "play/stage.h"

namespace riders::play {

void picture(Arguments &arguments, Stage &stage);
void film(Arguments &arguments, Stage &stage);
void depth(Arguments &arguments, Stage &stage);
void scale(Arguments &arguments, Stage &stage);
void resize(Arguments &arguments, Stage &stage);
void displays(Arguments &arguments, Stage &stage);

}  // namespace riders::play
