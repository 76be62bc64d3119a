// The dots of a screen, to look at: a ramp and three tints, as films have them.
#pragma once

#include <array>
#include <string>

#include "io/beside.h"
#include "screens/shapes.h"
#include "toolbox/host/machine.h"

namespace riders::choosing {

// In QuickDraw's pixels.
inline constexpr int kRampWidth = 144, kRampHeight = 36, kTintWidth = 120, kTintHeight = 48;
inline constexpr std::array<int, 3> kTints = {20, 50, 80};  // per cent of ink

struct SampleWanted {
    double frequency = 0, angle = 0;  // lines per inch, degrees
    std::string shape;                // the name of one that comes with the program
    std::filesystem::path file;       // or a spot function file; empty: none
    int dpi = 0;

    bool operator==(const SampleWanted &) const = default;
};

struct Sample {
    toolbox::Picture ramp;  // black and white, a pixel for each of the device's
    std::array<toolbox::Picture, kTints.size()> tints;
    int enlargement = 1;                        // of these pixels, in QuickDraw's
    double frequency = 0, angle = 0;            // those of the screen that was made
    std::array<double, kTints.size()> inked{};  // per cent of the pixels of each tint, as far as it is shown
};

// A sample is as large as the same piece of any film, so that finer screens look finer. `unwanted` ends an
// interpreter that is asked for the values of a spot function. Throws Refusal, which says why there are no such
// dots.
Sample sampleOf(const SampleWanted &wanted, io::Beside &unwanted);

}  // namespace riders::choosing
