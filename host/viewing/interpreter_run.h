// Runs of the interpreter for the window.
#pragma once

#include <filesystem>

#include "plates/interpreter/limits.h"
#include "viewing/viewed_job.h"

namespace riders::viewing {

// A person waits for the result, who can look at another page instead.
inline constexpr plates::InterpreterLimits kLimits = {
    .secondsAPage = 120, .slowPages = 10, .megabytes = 1024, .pageMegabytes = 2048};

// The file of that page alone. Throws Refusal where the job has no such page.
std::filesystem::path pageFile(const std::filesystem::path &folder, const char *extension, const ViewedJob &job);

}  // namespace riders::viewing
