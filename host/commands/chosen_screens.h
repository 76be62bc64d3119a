// The screens that the command line of `riders make` asks for, put together from a set, single plates, and what is
// chosen for all plates.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "make/request.h"
#include "screens/plate_screen.h"

namespace riders::commands {

struct ScreenWords {
    std::optional<std::string> set;   // a name or a file
    std::vector<std::string> plates;  // as plateFromText reads them
};

// What is chosen for all plates, as the user wrote it.
struct ScreenOfAll {
    std::optional<std::string> frequency, angle, spot;
};
// The plates of a set, by name or in a file: the frequency scales it, the dot shape takes the place of its own; an
// angle is refused. Throws io::Refusal.
std::vector<screens::PlateScreen> screensOfSet(const std::string &name, const ScreenOfAll &all);

// Completes the request: what holds for all plates is what the dialogs are asked for, the rest are the plates'
// pieces. Where a part is given twice, a plate's own counts before the set's; with a set, the request's frequency
// scales it, its dot shape takes the place of the set's, and it may have no angle. Returns all plates' screens,
// those of the rest last, as they are shown to the user. Throws io::Refusal.
std::vector<screens::PlateScreen> chooseScreens(const ScreenWords &words, make::MakeRequest &request);

// The number that an option was given; `wrong` says what it should have been, as screens::wrongFrequency does.
// Throws io::Refusal.
double numberGiven(const std::string &text, const std::string &option, std::string (*wrong)(double));

// The screen that --plate was given. Throws io::Refusal.
screens::PlateScreen plateGiven(const std::string &text);

// For CLI11: what is wrong with the argument of an option that takes a name or a file, or nothing.
std::string namesSomething(const std::string &text);

}  // namespace riders::commands
