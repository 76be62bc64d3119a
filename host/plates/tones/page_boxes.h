// Where a PDF says that its pages are trimmed; see boxesOf.
#pragma once

#include <string_view>

#include "plates/tones/tones.h"

namespace riders::plates {

// Takes a line that boxes.ps has written; any other is ignored. `quarterTurns` is how the page is rendered,
// anticlockwise.
void takeBoxLine(std::string_view line, int quarterTurns, PageBoxes &boxes);

}  // namespace riders::plates
