// Ghostscript, run as a program over a job.
#pragma once

#include <filesystem>
#include <functional>
#include <vector>

#include "plates/interpreter/interpreter_words.h"
#include "plates/interpreter/limits.h"
#include "plates/job/prepared_job.h"

namespace riders::plates {

enum class PlateDevice {
    none,           // nothing is written
    tints,          // each plate in 256 steps, "1(Cyan).tif"; several pages, spot inks too
    processPlates,  // the four process plates, screened, in one file: "1.pcx"
    allPlates       // those four and the spot inks, "1(Cyan).tif"; ten times slower
};

struct InterpreterRun {
    const PreparedJob &job;
    PlateDevice device;
    double dpi;
    std::vector<int> pages = {};   // ascending; empty for all
    std::filesystem::path folder;  // empty; page files are numbered from 1 in the order of `pages`
    InterpreterLimits limits;
    std::string ahead = {};  // PostScript to run before the job
    // Called whenever the job ends a page, asked for or not.
    std::function<void()> pageEnded = [] {};
};

// Runs the job with file protection and without the transfer function that
// Ghostscript lightens tints with below 800 dpi. Throws Refusal when the
// interpreter fails or takes too much time or memory, naming the page and what it said.
InterpreterReport interpret(const InterpreterRun &run);

}  // namespace riders::plates
