// What is known of each page and plate of a proof.
#pragma once

#include <string>
#include <vector>

#include "plates/measuring/asked_for.h"
#include "plates/measuring/flat_tint.h"
#include "plates/measuring/measured_screen.h"
#include "proof/facts/plate_pattern.h"
#include "proof/looking/ink_colours.h"

namespace riders::proof {

struct PlateFacts {
    std::string name;  // UTF-8
    Colour ink;
    plates::TintRange tints;
    plates::Place flatPlace;  // the best place to measure on, may be empty
    plates::Place loupe;      // what its loupe picture shows
    double flatTint = 0;      // the tint there, 0 to 1
    plates::AskedFor asked;
    plates::MeasuredScreen measured;
    std::string film, picture;  // files, relative to the folder; empty when the plate has no ink
};

struct PageFacts {
    int number = 0;
    double width = 0, height = 0;  // inches
    double dpi = 0;                // of the films
    std::string picture, rosette;  // files, relative to the folder; no rosette without ink
    plates::Place loupe;
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
