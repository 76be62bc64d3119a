// The screen that was asked for, by whom.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "plates/interpreter/interpreter_words.h"

namespace riders::plates {

struct AskedOfPlate {
    std::optional<double> frequency, angle;
};

// What was asked for, as far as it can be known.
struct AskedFor {
    std::optional<double> frequency, angle;
    std::string by;          // "the riders file", "the job", "nobody"
    bool binding = false;    // worth a warning where it is missed
    bool annotated = false;  // every plate gets a text
    bool shaped = false;     // of a riders file: it has a dot shape for all plates
    bool refused = false;    // nothing but a dot shape, which the interpreter did not take
    std::string shape = {};  // of the dots, by name, if it is one of those that are known
    std::map<std::string, AskedOfPlate> plates = {};  // of a riders file: for single plates, by the ink's bytes
};

// What a riders file says when the interpreter does not take something in it, from what the interpreter said;
// empty for nothing.
std::string refusedOfRiders(const std::vector<std::string> &said);

// What a riders file asks for. Throws Refusal when it cannot be read.
AskedFor askedByRiders(const std::filesystem::path &riders);

// What holds for a plate, named by the ink's bytes, or by the plate that the whole page is: first the riders
// file's values, those for that plate before those for all, then the screen in force at the page's end, which
// counts as asked for by nobody when it is the interpreter's own.
AskedFor askedFor(const std::string &plate, const AskedFor &riders, const AskedScreens &page,
                  const AskedScreens &interpreter);

}  // namespace riders::plates
