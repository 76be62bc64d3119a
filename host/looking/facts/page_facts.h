// What is known of each page and plate that is to be looked at.
#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "looking/facts/plate_pattern.h"
#include "looking/pictures/ink_colours.h"
#include "looking/tiles/tile_set.h"
#include "plates/measuring/asked_for.h"
#include "plates/measuring/flat_tint.h"
#include "plates/measuring/grid_place.h"
#include "plates/measuring/measured_screen.h"
#include "screens/grid.h"

namespace riders::looking {

struct PlateFacts {
    std::string name;  // UTF-8
    Colour ink;
    plates::TintRange tints;
    plates::Place flatPlace;  // the best place to measure on, may be empty
    plates::Place loupe;      // what its loupe picture shows
    double flatTint = 0;      // the tint there, 0 to 1
    plates::AskedFor asked;
    std::string own = "the interpreter’s own";  // whose screen it is where nobody asked for one
    plates::MeasuredScreen measured;
    TileSet tiles;                            // for the loupe; none where nobody wants it
    std::optional<plates::GridPoint> gridAt;  // where the grid that was asked for is laid over its dots
    // Of dots screened by the program itself: the screen as it was computed, and what on the film is not as it was
    // asked for, in sentences without the plate's name and full stop.
    std::optional<screens::Grid> made;
    std::vector<std::string> off;
    int levels = 0;          // grey levels; 0: as many as a cell has pixels
    std::string picture;     // a file, relative to the folder; empty when the plate has no ink
    std::string film, kind;  // likewise, as a URL, and what kind of file; empty when there is none
};

struct PageFacts {
    int number = 0;
    double width = 0, height = 0;  // inches
    double dpi = 0;                // of the dots, in square pixels
    bool byInterpreter = true;     // its dots, which it makes otherwise when it prints the job
    std::string picture, rosette;  // files, relative to the folder; no rosette without ink
    plates::Place loupe;
    std::vector<PlateFacts> plates;      // all, with ink or without
    std::vector<PlatePattern> patterns;  // that can be seen, where the plates print over each other
    double mesh = 0;                     // threads per inch of the mesh it is for; 0 for none
    std::string leftOut;                 // why it has no dots, plain text; empty where it has
    std::string refused;  // what of the riders file the interpreter did not take, plain text; empty for nothing
    std::vector<std::string> warnings;  // plain text
};

// Whether there is a loupe on it.
inline bool hasTiles(const PageFacts &page)
{
    return std::any_of(page.plates.begin(), page.plates.end(),
                       [](const PlateFacts &plate) { return !plate.tiles.folder.empty(); });
}

struct LookFacts {
    std::string job;         // its file name
    std::string riders;      // likewise, may be empty
    std::string resolution;  // in dpi
    bool films = false;      // screened by the program itself
    std::string loupe = {};  // the page that zooms, as a URL; empty for none
    std::vector<PageFacts> pages;
    std::vector<std::string> said;  // the interpreter's words
};

}  // namespace riders::looking
