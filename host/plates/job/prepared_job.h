// A job made ready for the interpreter: its kind known, the riders file added.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "plates/job/job_kind.h"

namespace riders::plates {

struct PreparedJob {
    JobKind kind = JobKind::postScript;
    std::filesystem::path name;                // as the user knows it
    std::vector<std::filesystem::path> files;  // absolute, to be run in this order
};

// Writes the files it needs into `folder`; the job itself is not touched. Throws Refusal, also
// when `riders` (empty: none) is not a riders file or the job already has one in it.
PreparedJob prepareJob(const std::filesystem::path &job, const std::filesystem::path &riders,
                       const std::filesystem::path &folder);

}  // namespace riders::plates
