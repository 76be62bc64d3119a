// What a person wants to know of a PostScript job before doing anything to it.
#pragma once

#include <filesystem>

#include "app/job_comments.h"

namespace riders::app {

struct JobSummary {
    JobComments comments;
    bool hasRiders = false;
};

// Reads no more than the job's head and its last 64 KiB. Throws Refusal when it
// cannot be read or is not PostScript.
JobSummary summaryOf(const std::filesystem::path &job);

}  // namespace riders::app
