// `riders film --printer`: films printed instead of kept.
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

#include "film/request.h"

namespace riders::commands {

struct PrinterWords {
    std::string queue, media;
    std::vector<std::string> options;
    int copies = 1;
    bool dryRun = false;
};

void addPrinter(CLI::App &command, PrinterWords &words);

struct FilmPrinting {
    const PrinterWords &words;
    bool resolutionAsked;
    bool json;
    std::string command;  // its name, for warnings
};

// Makes the films and prints them, unless this is a dry run. Returns what went wrong when the result was printed,
// or nothing. Throws Refusal, and what makeFilms throws; nothing is printed then.
std::string printFilms(film::FilmRequest &request, const FilmPrinting &printing);

}  // namespace riders::commands
