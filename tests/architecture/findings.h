// How findings are compared in these tests.
#pragma once

#include <string>

#include "architecture/checks.h"

namespace architecture {

// One after the other, each ended by a line end; "" where all is well.
inline std::string lines(const Findings &findings)
{
    std::string all;
    for (const std::string &finding : findings)
        all += finding + "\n";
    return all;
}

}  // namespace architecture
