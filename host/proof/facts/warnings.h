// What on a page is worth a warning.
#pragma once

#include <string>
#include <vector>

#include "proof/facts/page_facts.h"

namespace riders::proof {

// Degrees between two screens that look the same when turned by 90.
double anglesApart(double one, double other);

// What is worth a warning, in plain words; the plates' facts must be complete.
std::vector<std::string> warningsFor(const PageFacts &page);

}  // namespace riders::proof
