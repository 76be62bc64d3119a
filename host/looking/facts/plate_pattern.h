// A pattern that plates make with each other on the film.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "plates/measuring/place.h"

namespace riders::looking {

struct PlatePattern {
    std::vector<std::size_t> plates;  // places among the page's, in ascending order
    bool shared = false;              // two plates with one screen: no pattern, but a shift of the colour
    double millimetres = 0;           // its period
    double rosette = 0;               // that of the rosette's own, in millimetres
    double cell = 0;                  // the mean of the screens' cells, in millimetres
    std::string light;                // a plate of it whose ink is light; empty for none
    std::string change;               // what to change so that it goes, as in "turn Cyan to 15°"; may be empty
    plates::Place where;              // that is worth a picture
    std::string picture;              // a file, relative to the folder; may be empty
    double shown = 0;                 // the side of what the picture shows, in millimetres
    bool afar = false;                // the picture is without dots, as seen from afar
};

}  // namespace riders::looking
