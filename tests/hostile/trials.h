// How many texts are tried, and which.
// RIDERS_HOSTILE=20000 RIDERS_HOSTILE_SEED=2 hostile_tests tries more of them, and others.
#pragma once

#include <cstddef>

struct Trials {
    // Says on standard output what it is.
    explicit Trials(size_t standardCount);

    unsigned seed = 1;
    size_t count;
    static constexpr size_t atATime = 250;
};
