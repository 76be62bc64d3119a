// The screens of films that a command line asks for.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "screens/plate_screen.h"

namespace riders::commands {

struct FilmScreenWords {
    std::optional<std::string> set;                     // a name or a file
    std::optional<std::string> frequency, angle, spot;  // for all plates; the frequency scales a set
    std::vector<std::string> plates;                    // as plateFromText reads them
};

// The options for them.
std::vector<CLI::Option *> addScreenOptions(CLI::App &command, FilmScreenWords &words);

// What is chosen for each plate, and for screens::kRestOfPlates. Throws io::Refusal.
std::vector<screens::PlateScreen> chooseFilmScreens(const FilmScreenWords &words);

// For CLI11: what is wrong with the argument of --dpi, or nothing.
std::string isFilmResolution(const std::string &text);

}  // namespace riders::commands
