// A screen on a printing mesh: how many threads there are for a line, and what pattern the two make.
//
// Nobody claims to predict that pattern exactly: it depends on the weave, the stencil and the ink as well. What is
// computed here are the ratio, the usual advice for it, and the period that the waves have.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "screens/moire.h"

namespace riders::screens {

// Threads for each line of the screen.
inline constexpr double kLeastRatio = 2.5, kUsualRatio = 3.75, kFineRatio = 5;

inline constexpr double kLeastThreads = 10, kMostThreads = 1000;      // per inch
inline constexpr double kLeastMeshScreen = 1, kMostMeshScreen = 300;  // lines per inch
inline constexpr double kMeshAngle = 22.5;                            // the usual one, in degrees

// A number per inch, or of another unit: "225", "225/in", "90/cm", with a fraction too. None for anything else,
// and for what is not above 0.
std::optional<double> perInchFromText(std::string_view text);

struct OnMesh {
    double ratio = 0;
    // Between the screen, grid 0, and the threads, grid 1: that which shows most, and the coarsest.
    std::optional<Pattern> most, coarsest;
    double nearestThread = 0;  // degrees between the screen's axes and the threads
};

// The threads of a mesh: their number per inch, at 0 and 90 degrees.
Grid threadsOf(double perInch);
OnMesh onMesh(const Grid &screen, double threadsPerInch);

// Advice and doubts leave room for the little by which a screen on a film may be off.
bool hasTooFewThreads(const OnMesh &mesh);
// What is usually said of that ratio, as a sentence without its full stop.
std::string adviceFor(const OnMesh &mesh);
// What else there is to say, each a sentence without its full stop: rows too near to the threads, a pattern that
// can be seen; with the nearest angle at which neither is so, if there is one.
std::vector<std::string> doubtsOf(const Grid &screen, double threadsPerInch);

// Threads per inch of meshes that are sold, from coarse to fine, of which the ratio to the screen is from 2 to 6.
std::vector<double> meshesFor(double frequency);
// Usual frequencies, lines per inch, for which the mesh has a ratio from 2 to 6.
std::vector<double> frequenciesFor(double threadsPerInch);

}  // namespace riders::screens
