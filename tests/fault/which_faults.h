// Which of many faults are tried.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <random>
#include <vector>

// Whether RIDERS_FAULTS=all asks for every fault.
bool triesAllFaults();

// What the tests of the suite try of it: so many, the same each time.
template <class T>
void keepSome(std::vector<T> &faults, size_t some)
{
    if (getenv("RIDERS_FAULTS"))
        return;
    std::mt19937 same(1);
    std::shuffle(faults.begin(), faults.end(), same);
    faults.resize(std::min(faults.size(), some));
}
