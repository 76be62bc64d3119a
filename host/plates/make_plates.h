// All plates of a surveyed job, in dots, by as many cores as there are.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "io/workers.h"
#include "plates/files/plate.h"
#include "plates/survey/survey.h"

namespace riders::plates {

struct RenderedPage {
    size_t index = 0;                                 // in the survey
    std::vector<BitPlate> plates;                     // as surveyed
    AskedScreens screens;                             // in force at the page's end
    std::shared_ptr<const InterpreterReport> report;  // of the run that rendered it, with the inks of all
};

struct PlatesRun {
    const PreparedJob &job;
    const Survey &survey;
    InterpreterLimits limits;
    double dpi;
    std::filesystem::path work;  // for files in between
    int cores;
    // By the workers: for each page, and then once its plates are read. Of `pageRead`, several calls may
    // run at a time; it may add work, which is finished before makePlates returns.
    std::function<void()> pageRendered;
    std::function<void(RenderedPage)> pageRead;
};

// Returns what the interpreter said while it rendered the first page. Throws
// Refusal, and what the two functions throw.
std::vector<std::string> makePlates(const PlatesRun &run, io::Workers &workers);

}  // namespace riders::plates
