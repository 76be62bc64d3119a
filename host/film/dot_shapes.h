// The dot shapes of films: those that are built in, and spot functions that the interpreter knows.
#pragma once

#include <string>

#include "screening/thresholds.h"

namespace riders::film {

struct DotShape {
    std::string name;  // for people; of a file its name
    std::string body;  // of its spot function; empty for one that is built in
};

// The shape that `riders make --spot` means by that name or file. Throws Refusal where there is none.
DotShape dotShapeNamed(const std::string &nameOrFile);

// From any thread. Throws Refusal where the body is no spot function, and what findTile throws.
screening::Thresholds thresholdsOf(const DotShape &shape, const screening::Screen &screen,
                                   const screening::Resolution &resolution);

}  // namespace riders::film
