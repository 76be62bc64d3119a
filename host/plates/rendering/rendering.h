// Pages rendered in dots by the interpreter, in the way that suits their inks.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "plates/files/plate.h"
#include "plates/interpreter/interpreter.h"
#include "plates/survey/survey.h"

namespace riders::plates {

enum class RenderingWay {
    processPlates,  // of pages without spot inks
    inksApart,      // several runs of the fast device, one for the process plates and one for each spot ink; see
                    // spot_inks.h for the pages for which it gives what allPlates does
    allPlates       // one run of the slow device
};

struct Rendering {
    RenderingWay way;
    std::vector<size_t> pages;     // ascending indices into the survey
    std::filesystem::path folder;  // made by renderPages
    double dpi;
};

struct RenderedJob {
    const PreparedJob &job;
    const Survey &survey;
    InterpreterLimits limits;
};

// Runs the interpreter as often as needed. The report is that of the first run. Throws what interpret does.
InterpreterReport renderPages(const RenderedJob &job, const Rendering &rendering);

// The plates of a rendered page (an index into the rendering's), as surveyed; their files are removed. `report` is
// what renderPages returned. Throws Refusal when they are missing or cannot be read.
std::vector<BitPlate> readRendered(const RenderedJob &job, const Rendering &rendering,
                                   const InterpreterReport &report, size_t page);

// The spot inks of a surveyed page, as the interpreter writes them.
std::vector<std::string> spotInksOf(const SurveyedPage &page);

}  // namespace riders::plates
