// What to change so that patterns between screens go.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "screens/grid.h"

namespace riders::screens {

struct Change {
    std::size_t screen = 0;                  // its place among the screens
    std::optional<double> frequency, angle;  // what is to be another; lines per inch, degrees
};

struct Remedy {
    std::vector<Change> changes;  // one for a screen at most
    bool complete = false;        // after them no pattern can be seen
};

// Changes as few screens as it can, only movable ones, so that no pattern of two or three can be seen (other than
// those with a light ink) and no screen that was changed lies on another as if they were one. Proposes what
// printers use, where it serves: another screen's frequency, then multiples of 7.5 degrees; then what makes the
// waves of three screens add up to nothing, any half degree, and other frequencies. Each proposal is tried by
// computing all patterns that it makes; of more than kMostInThrees screens only those of the first two kinds.
// Nothing is changed where no pattern can be seen.
Remedy remedyFor(const std::vector<NamedScreen> &screens);

}  // namespace riders::screens
