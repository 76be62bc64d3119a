// What a person wants to know of a job before doing anything to it.
#pragma once

#include <filesystem>

#include "app/job_comments.h"

namespace riders::app {

struct JobSummary {
    JobComments comments;
    bool hasRiders = false;
    // Whether a riders file can be put into it: PDF, and EPS in its binary wrapper, have no place for one.
    bool takesRiders = true;
};

// Reads no more than the job's head and its last 64 KiB. Throws Refusal when it
// cannot be read or is neither PostScript nor EPS nor PDF.
JobSummary summaryOf(const std::filesystem::path &job);

}  // namespace riders::app
