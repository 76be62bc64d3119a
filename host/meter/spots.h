// Spot functions, and the usual ones by name.
#pragma once

#include <functional>
#include <vector>

namespace riders::meter {

// A spot function as setscreen takes it: x and y from -1 to 1 over a cell, the
// highest values are inked first.
using SpotFunction = std::function<double(double x, double y)>;

// First those of the menu in its order, as in resources/ps/spot_*.ps, then other usual ones of PostScript.
// Formulas from the PostScript Language Reference, third edition, section 7.4.
struct NamedSpot {
    const char *name;
    double (*value)(double x, double y);
};
const std::vector<NamedSpot> &namedSpots();

}  // namespace riders::meter
