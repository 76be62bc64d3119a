// What is known of each page and plate of a proof.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "proof/inks.h"
#include "proof/interpreter.h"
#include "proof/tints.h"

namespace riders::proof {

// What was asked for, as far as it can be known.
struct AskedFor {
    std::optional<double> frequency, angle;
    std::string by;          // "the riders file", "the job", "nobody"
    bool binding = false;    // worth a warning where it is missed
    bool annotated = false;  // every plate gets a text
    std::string shape = {};  // of the dots, by name, where it is one of those that are known
};

struct MeasuredScreen {
    bool found = false;
    double frequency = 0, angle = 0;  // lines an inch; degrees, 0 to below 90 for dots
    double ink = 0;                   // 0 to 1, where it was measured
    Place where;
    std::string shape = {};  // the spot function most like the dots; empty where that cannot be told
};

struct PlateFacts {
    std::string name;  // UTF-8
    Colour ink;
    TintRange tints;
    Place even;           // the best place to measure on, may be empty
    Place loupe;          // what its loupe picture shows
    double evenTint = 0;  // the tint there, 0 to 1
    AskedFor asked;
    MeasuredScreen measured;
    std::string film, picture;  // files, relative to the folder; empty when the plate has no ink
};

struct PageFacts {
    int number = 0;
    double width = 0, height = 0;  // inches
    std::string picture, rosette;  // files, relative to the folder; no rosette without ink
    Place loupe;
    std::vector<PlateFacts> plates;     // all, with ink or without
    std::vector<std::string> warnings;  // plain text
};

struct ProofFacts {
    std::string job;     // its file name
    std::string riders;  // likewise, may be empty
    double dpi = 0;
    std::vector<PageFacts> pages;
    std::vector<std::string> said;  // the interpreter's words
};

// What a riders file asks for. Throws Refusal where it cannot be read.
AskedFor askedByRiders(const std::filesystem::path &riders);

// What holds for a plate: first the riders file's values, then the screen in
// force at the page's end, which is nobody's when it is the interpreter's own.
AskedFor askedFor(const std::string &plate, const AskedFor &riders, const AskedScreens &page,
                  const AskedScreens &interpreter);

// Degrees between two screens that look the same when turned by 90.
double anglesApart(double one, double other);

// What is worth a warning, in plain words; the plates' facts must be complete.
std::vector<std::string> warningsFor(const PageFacts &page);

// "45", "12.5", "62.13": at most so many digits behind the point, no zeros at the end.
std::string decimal(double value, int digits);

}  // namespace riders::proof
