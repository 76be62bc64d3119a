// Remainders of whole numbers on either side of 0.
#pragma once

#include <cstdint>

namespace riders::screening {

// From 0 to range - 1, also of a negative number; range is above 0.
inline std::int64_t remainderFrom0(std::int64_t number, std::int64_t range)
{
    const std::int64_t rest = number % range;
    return rest < 0 ? rest + range : rest;
}

}  // namespace riders::screening
