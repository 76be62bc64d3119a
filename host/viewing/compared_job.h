// A job with its riders file and without.
#pragma once

#include <filesystem>
#include <optional>

#include "viewing/viewed_job.h"

namespace riders::viewing {

struct ComparedJob {
    ViewedJob with;                    // as it is where there is no riders file
    std::optional<ViewedJob> without;  // where there is one, and the job is not too large to be copied
    std::filesystem::path riders;      // the riders file; empty: there is none
};

// `tried` is a riders file that is not in the job (empty: none); one that is in the job is taken out into the
// folder, which must outlive what is returned. Throws Refusal.
ComparedJob compareJob(const std::filesystem::path &job, const std::filesystem::path &tried,
                       const std::filesystem::path &folder);

}  // namespace riders::viewing
