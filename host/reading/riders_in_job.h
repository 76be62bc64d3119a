// The riders files in a job.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "io/bytes.h"

namespace riders::reading {

struct RidersInJob {
    std::uint64_t line = 1, offset = 0;  // where it begins: its opening line, if it has one; lines count from 1
    std::string document;                // the embedded document that it is in; empty for the job itself
    bool marked = false;                 // riders apply has added it
    bool damaged = false;                // it was added, but is not as it was then: strip refuses it
    std::string riders;                  // the file, as much as is there
};

// What a job begins with, at least as much as shows its kind.
inline constexpr std::size_t kStartOfJob = 1024;

// All of them, in their order: in the job and in embedded documents, between marker lines and without. Data
// sections are passed over. Reads the input once, whatever its size, with some MiB of memory. `start` is what was
// read of it before. Throws Refusal.
std::vector<RidersInJob> ridersInJob(const io::OpenFile &job, std::string_view start);

}  // namespace riders::reading
