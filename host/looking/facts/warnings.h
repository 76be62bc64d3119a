// What on a page is worth a warning.
#pragma once

#include <string>
#include <vector>

#include "looking/facts/page_facts.h"

namespace riders::looking {

// Degrees between two screens that look the same when turned by 90.
double anglesApart(double one, double other);

// Grey levels that a cell of a screen has, one for each number of its pixels.
int levelsOfCell(double frequency, double dpi);

// What of a plate's screen is not as it was asked for: sentences without the plate's name and full stop.
std::vector<std::string> whatIsOff(const PlateFacts &plate);

// What is worth a warning, in plain words; the plates' facts must be complete.
std::vector<std::string> warningsFor(const PageFacts &page);

}  // namespace riders::looking
