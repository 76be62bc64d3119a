// The patterns that the plates of a page make, and pictures of them.
#pragma once

#include <filesystem>

#include "looking/facts/page_facts.h"
#include "looking/page_dots.h"
#include "looking/pictures/page_looks.h"

namespace riders::looking {

// Finds the patterns of a page whose plates' screens are known, where the plates print over each other (the twelve
// that show most), and says where pictures of those that are worth a warning are to be taken. A picture shows no
// more than a square of `mostSide` inches.
void findPatterns(PageFacts &page, const PageLook &look, double mostSide);

// Puts these pictures into the folder, but those with plates that have none themselves. Throws Refusal.
void drawPatterns(PageFacts &page, const PageDots &dots, const std::filesystem::path &folder);

}  // namespace riders::looking
