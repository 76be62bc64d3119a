// What `riders film` prints of the films that it made.
#pragma once

#include <string>
#include <vector>

#include "film/film.h"

namespace riders::commands {

// A line for each film, and one for the plates without ink.
std::string filmsInWords(const film::FilmsMade &made);
// An object for each film.
std::vector<std::string> filmsAsJson(const film::FilmsMade &made);
std::string filmsInJson(const film::FilmsMade &made);
// A line for each warning.
std::string warningsInWords(const film::FilmsMade &made, const std::string &command);

}  // namespace riders::commands
