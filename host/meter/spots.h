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
// Others that have a name: a job that asks for one is known by its values, but nobody could say by looking at a
// film which of them it is. Those with several dots or a line turned aside in a cell are not among them: a film of
// theirs has another frequency or angle than the job asks for.
const std::vector<NamedSpot> &rarerSpots();

}  // namespace riders::meter
