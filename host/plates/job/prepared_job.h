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

// Writes what it needs to into `folder`; the job itself is not touched. Throws Refusal, also
// where the riders file (empty: none) is not one, or the job has one in it already.
PreparedJob prepareJob(const std::filesystem::path &job, const std::filesystem::path &riders,
                       const std::filesystem::path &folder);

}  // namespace riders::plates
