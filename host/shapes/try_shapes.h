// Dot shapes tried in Ghostscript.
#pragma once

#include <vector>

#include "io/beside.h"
#include "screening/pixel_places.h"
#include "screens/shapes.h"
#include "shapes/trial_words.h"

namespace riders::shapes {

struct TrialLimits {
    int seconds = 20;              // after so many without a row of values it is ended
    int megabytes = 512;           // of memory that the interpreter may take
    io::Beside *beside = nullptr;  // see LimitedRun; used by the calling thread
};

// One trial for each shape, in their order. Files are out of the shapes' reach. Throws Refusal where the
// interpreter cannot be run, and Interrupted.
std::vector<ShapeTrial> tryShapes(const std::vector<screens::Shape> &shapes, const TrialLimits &limits = {});

// The same for one shape, with its values at the pixels of a tile. Takes about 3 seconds for a million of them.
ShapeTrial tabulateShape(const screens::Shape &shape, const screening::PixelPlaces &places,
                         const TrialLimits &limits = {});

}  // namespace riders::shapes
