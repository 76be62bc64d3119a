// The first look at a job: its pages and plates in 256 steps, at a low resolution.
#pragma once

#include <filesystem>
#include <map>
#include <vector>

#include "proof/facts.h"
#include "proof/interpreter.h"
#include "proof/progress.h"
#include "proof/proof.h"
#include "io/workers.h"

namespace riders::proof {

struct SurveyedPlate {
    std::string plate;  // as the interpreter writes it
    bool ink = false;
    TintRange tints;
    Place even;          // the best place to measure on, may be empty
    double evenInk = 0;  // the tint there, 0 to 1
    Place loupe;         // where its dots show best; the page's place if they show well there
};

struct SurveyedPage {
    int number = 0;
    double width = 0, height = 0;  // inches
    Place loupe;
    std::vector<SurveyedPlate> plates;  // process plates first, with ink or without
    bool spotInks = false;              // there are other plates than the process ones
};

struct Survey {
    std::vector<SurveyedPage> pages;  // those asked for, rising
    InterpreterReport report;
};

// Reads the pages asked for and writes the picture of each into `pictures`,
// "page-N.png". Throws Refusal where the job fails, paints no page, or has not all
// pages asked for.
Survey surveyJob(const ProofRequest &request, const PreparedJob &job, const std::vector<int> &pages,
                 const std::filesystem::path &work, const std::filesystem::path &pictures, io::Workers &workers,
                 Progress &progress);

}  // namespace riders::proof
