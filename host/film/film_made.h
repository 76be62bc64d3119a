// What is known of a film that was made.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "film/screen_choice.h"
#include "plates/measuring/measured_screen.h"
#include "screening/tile.h"

namespace riders::film {

struct PlateMade {
    std::filesystem::path file;
    int page = 0;
    std::string plate;  // UTF-8, for people
    PlateDots asked;
    double frequency = 0, angle = 0;  // of the threshold table that it was screened with
    plates::MeasuredScreen measured;  // on the film; the angle as uprightAngle has it
    std::size_t columns = 0, rows = 0;
    screening::Resolution resolution;
    std::vector<std::string> warnings;  // sentences without the plate's name and full stop
};

struct BlankPlate {
    int page = 0;
    std::string plate;
};

struct FilmsMade {
    std::vector<PlateMade> films;
    std::vector<BlankPlate> blank;  // plates without ink, of which no film was made
    std::filesystem::path look;     // the page to look at; empty where there is none
};

// The angle on the upright page of a page that lies on the film turned anticlockwise by so many degrees: of those
// that look the same, the one nearest to the angle asked for.
double uprightAngle(const plates::MeasuredScreen &onFilm, int rotation, double asked);

// What on the film is not as it was asked for.
std::vector<std::string> warningsOf(const PlateMade &made);

}  // namespace riders::film
