// What the window shows of a job.
#pragma once

#include <filesystem>

#include "io/beside.h"

namespace riders::viewing {

struct ViewedJob {
    std::filesystem::path job;
    std::filesystem::path riders = {};  // put into it first; empty: the job as it is
    int page = 1;
};

}  // namespace riders::viewing
