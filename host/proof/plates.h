// The plates of a job in dots: films, loupe pictures, measurements.
#pragma once

#include <vector>

#include "proof/facts.h"
#include "proof/progress.h"
#include "proof/proof.h"
#include "proof/survey.h"
#include "io/workers.h"

namespace riders::proof {

struct PlatesRun {
    const ProofRequest &request;
    const PreparedJob &job;
    const Survey &survey;
    const AskedFor &riders;        // what the riders file asks for
    std::filesystem::path work;    // for the time being
    std::filesystem::path folder;  // of the proof
    int cores;
};

struct Plates {
    std::vector<PageFacts> pages;   // as surveyed
    std::vector<std::string> said;  // by the interpreter
};

// Renders all surveyed pages and fills the proof's folder. Throws Refusal.
Plates makePlates(const PlatesRun &run, io::Workers &workers, Progress &progress);

}  // namespace riders::proof
