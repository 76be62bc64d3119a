// All plates of a surveyed job, in dots, made on several cores.
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
    std::shared_ptr<const InterpreterReport> report;  // of the run that rendered it, with all pages' spot inks
};

struct PlatesRun {
    const PreparedJob &job;
    const Survey &survey;
    InterpreterLimits limits;
    double dpi;
    std::filesystem::path work;  // for temporary files
    int cores;
    // Called by the workers: when a page is rendered, and once its plates are read. Several calls of
    // `pageRead` may run at once; it may add work, which is finished before makePlates returns.
    std::function<void()> pageRendered;
    std::function<void(RenderedPage)> pageRead;
    // Called by the workers, in place of both, for a page that takes longer than it may; `why` is what a Refusal
    // would say. The other pages are made. Where it is empty, that is thrown.
    std::function<void(size_t index, const std::string &why)> pageLeftOut = {};
};

// Returns what the interpreter said while it rendered the first page. Throws
// Refusal, and what the two functions throw.
std::vector<std::string> makePlates(const PlatesRun &run, io::Workers &workers);

}  // namespace riders::plates
