// How a dot grows with the tint, from the values of its spot function.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "shapes/trial_words.h"

namespace riders::shapes {

// Values that differ no more are alike: it is what the interpreter's arithmetic leaves.
inline constexpr float kAlike = 1e-5F;
// What a line of equal values through the cell takes up at most, there and back (as in Square and Cross).
inline constexpr double kLineShare = 0.04;

// Samples of like values.
struct Band {
    std::size_t from = 0, size = 0;  // in the order in which they are inked
};
struct Bands {
    Band widest;
    std::size_t count = 0;
};
Bands bandsOf(std::vector<float> values);

// For each sample of a cell, as in ShapeTrial, the tint from which it is inked, above 0 to 1: each next one has a
// tint of its own. Like values on a line are inked here and there, those of an area from one side on.
using Growth = std::vector<float>;
Growth growthOf(const std::vector<float> &values);

// Ink of a flat tint, 0 to 1, where the ink spreads over its edge by that share of the cell's side.
double inkWithSpread(const Growth &spread, double tint);
// What inkWithSpread wants: the tint from which each sample is inked when ink spreads that far.
Growth spreadGrowth(const Growth &growth, double spread);

// The tints, 0 to 1, from which the dots are joined: in one direction, and all to each other.
struct Joining {
    double first = 1, all = 1;
    std::string direction;  // of the first: "to rows", "to columns", "aslant"; empty where all join at once
};
Joining joiningOf(const Growth &growth);

// What is worth knowing of a shape that works, a sentence each; often nothing.
std::vector<std::string> notesOn(const std::vector<float> &values);

}  // namespace riders::shapes
