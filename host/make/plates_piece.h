// The piece that gives single plates screens of their own; docs/riders-file.md describes it.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace riders::make {

// What is left out stays as it is on that plate.
struct PlatePiece {
    std::string plate;                // the colorant as PostScript spells it, 1 to 127 bytes
    std::optional<double> frequency;  // lines per inch
    std::optional<double> angle;      // degrees
    std::string spotBody = {};        // PostScript, as in a spot function file; empty when left out
    std::string spotFile = {};        // the name of that file, where it is none that comes with the program
};

// The riders file, which the plug-in has made, with one more piece. Where a plate is named twice the later entry
// counts; what a riders file chooses for all plates holds on those that have no such entry. Without plates the
// text is as it was. Throws io::Refusal for a text that is no whole riders file or has no place for the piece, for
// a name that no plate can have, for a number that is none, and when a riders file cannot be so long.
std::string withPlates(std::string riders, const std::vector<PlatePiece> &plates);

// The riders file with a comment for each of the files that dot shapes are from: what they are called can be read
// nowhere else. `ofRest` is that of the dot shape chosen for all plates; empty for none. Throws io::Refusal as
// withPlates.
std::string withShapeNames(std::string riders, const std::string &ofRest, const std::vector<PlatePiece> &plates);

}  // namespace riders::make
