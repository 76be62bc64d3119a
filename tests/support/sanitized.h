// Whether this is the build with the sanitizers, in which what a test tries takes several times as long: it may
// try less there where the plain build tries all, which finds the same wrong results.
#pragma once

#include <cstdlib>
#include <string>

#ifdef __has_feature
constexpr bool kSanitized = __has_feature(address_sanitizer);
#else
constexpr bool kSanitized = false;
#endif

// RIDERS_FAULTS=all has everything tried, in either build.
inline bool triesAll()
{
    const char *which = std::getenv("RIDERS_FAULTS");
    return which && std::string(which) == "all";
}

inline bool triesLess()
{
    return kSanitized && !triesAll();
}
