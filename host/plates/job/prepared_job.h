// A job made ready for the interpreter: its kind known, the riders file added.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "plates/job/job_kind.h"

namespace riders::plates {

struct PreparedJob {
    JobKind kind = JobKind::postScript;
    std::filesystem::path name;                // as the user knows it
    std::vector<std::filesystem::path> files;  // absolute, to be run in this order
};

// True where the path names a pipe or a device, which cannot be read twice.
bool comesOnce(const std::filesystem::path &path);
// What comes once is kept in the file; returns the path that can be read again. `seconds` is how long nothing may
// come from it; `check` is called once, for its first bytes (kJobHead, or all of them). Throws Refusal,
// Interrupted, and what `check` throws.
std::filesystem::path readableAgain(
    const std::filesystem::path &path, const std::filesystem::path &file, int seconds,
    const std::function<void(std::string_view head)> &check = [](std::string_view) {});

// Writes the files it needs into `folder`; the job itself is not touched, and read once. Throws Refusal, also
// when `riders` (empty: none) is not a riders file or the job already has one in it, or when nothing comes
// from it for so many `seconds`.
PreparedJob prepareJob(const std::filesystem::path &job, const std::filesystem::path &riders,
                       const std::filesystem::path &folder, int seconds = 300);

}  // namespace riders::plates
