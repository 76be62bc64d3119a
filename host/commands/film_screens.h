// The screens that the command line of `riders film` asks for.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "screens/plate_screen.h"

namespace riders::commands {

struct FilmScreenWords {
    std::optional<std::string> set;                     // a name or a file
    std::optional<std::string> frequency, angle, spot;  // for all plates; the frequency scales a set
    std::vector<std::string> plates;                    // as plateFromText reads them
};

// What is chosen for each plate, and for screens::kRestOfPlates. Throws io::Refusal.
std::vector<screens::PlateScreen> chooseFilmScreens(const FilmScreenWords &words);

}  // namespace riders::commands
