// Films to measure: a job, run by Ghostscript.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "meter/meter.h"
#include "processes.h"

// A page of raw PBM, read into memory.
class Film {
public:
    Film(const std::filesystem::path &file, double dpi);
    riders::meter::BitPage page() const;

private:
    std::string bytes_;
    int width_, height_;
    double dpi_;
};

// Runs the files, one after the other, to films of that size in inches, named page%d.pbm in the
// folder. Throws when Ghostscript fails.
ProcessRun runToFilm(const std::filesystem::path &folder, const std::vector<std::string> &files, double dpi,
                     double width, double height);
