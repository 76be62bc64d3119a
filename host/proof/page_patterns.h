// The patterns that the plates of a page make, and pictures of them.
#pragma once

#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "plates/files/plate.h"
#include "proof/facts/page_facts.h"

namespace riders::proof {

// "page-3", with which the names of a page's files begin.
std::string nameOf(const PageFacts &page);

// The names that pictures of patterns take.
void takePatternNames(std::set<std::string> &taken);

// Finds the patterns of a page whose plates have all been measured, where the plates print over each other (the
// twelve that show most), and puts pictures of those that are worth a warning into the proof's folder. `bits` are
// the page's plates. Throws Refusal.
void addPatterns(PageFacts &page, const std::vector<plates::BitPlate> &bits, double dpi,
                 const std::filesystem::path &folder);

}  // namespace riders::proof
