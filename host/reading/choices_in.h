// Reading what a riders file chooses.
#pragma once

#include <string_view>

#include "reading/choices.h"

namespace riders::reading {

// Of a riders file, or of what is left of one. Throws what screens::installedShapes does where it has a dot shape
// that is not in the menu.
Choices choicesIn(std::string_view riders);

}  // namespace riders::reading
