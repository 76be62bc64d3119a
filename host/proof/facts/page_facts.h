// What is known of each page and plate of a proof.
#pragma once

#include <string>
#include <vector>

#include "proof/facts/asked_for.h"
#include "proof/facts/measured_screen.h"
#include "proof/facts/plate_pattern.h"
#include "proof/looking/flat_tint.h"
#include "proof/looking/ink_colours.h"

namespace riders::proof {

struct PlateFacts {
    std::string name;  // UTF-8
    Colour ink;
    TintRange tints;
    Place flatPlace;      // the best place to measure on, may be empty
    Place loupe;          // what its loupe picture shows
    double flatTint = 0;  // the tint there, 0 to 1
    AskedFor asked;
    MeasuredScreen measured;
    std::string film, picture;  // files, relative to the folder; empty when the plate has no ink
};

struct PageFacts {
    int number = 0;
    double width = 0, height = 0;  // inches
    double dpi = 0;                // of the films
    std::string picture, rosette;  // files, relative to the folder; no rosette without ink
    Place loupe;
    std::vector<PlateFacts> plates;      // all, with ink or without
    std::vector<PlatePattern> patterns;  // that can be seen, where the plates print over each other
    double mesh = 0;                     // threads per inch of the mesh it is for; 0 for none
    std::vector<std::string> warnings;   // plain text
};

struct ProofFacts {
    std::string job;     // its file name
    std::string riders;  // likewise, may be empty
    double dpi = 0;
    std::vector<PageFacts> pages;
    std::vector<std::string> said;  // the interpreter's words
};

}  // namespace riders::proof
