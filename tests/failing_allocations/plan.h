// What a test and the library that it preloads share: one record in a file that both have mapped.
#pragma once

#include <atomic>

struct AllocationPlan {
    static constexpr const char *kVariable = "RIDERS_ALLOCATION_PLAN";  // the file's path

    long nth = 0;                             // the allocation (from 1) that fails; 0: none
    long further = 0;                         // and so many later ones
    std::atomic<long> count = 0, failed = 0;  // since main began
};
