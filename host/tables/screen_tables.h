// The threshold table of a plate's screen, whatever its dot shape.
#pragma once

#include "screening/thresholds.h"
#include "screens/shapes.h"
#include "shapes/try_shapes.h"

namespace riders::tables {

// Of a shape that comes with the program by its formula; of any other from what its body gives in the interpreter,
// within the limits. Only name and body of the shape count. May be called from several threads at once. Throws
// Refusal, which names the shape, where it is no spot function; std::invalid_argument as screening::findTile does;
// and Interrupted.
screening::Thresholds thresholdsOf(const screens::Shape &shape, const screening::Screen &screen,
                                   const screening::Resolution &resolution,
                                   const shapes::TrialLimits &limits = {});

// Of a shape by its name, as builtInShape returns it. Throws what findTile does.
screening::Thresholds thresholdsOf(const std::string &builtInShape, const screening::Screen &screen,
                                   const screening::Resolution &resolution);

}  // namespace riders::tables
