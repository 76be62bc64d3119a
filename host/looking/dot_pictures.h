// The pictures of a page's dots, in the folder of what is to be looked at.
#pragma once

#include <cstddef>
#include <filesystem>

#include "looking/facts/page_facts.h"
#include "looking/page_dots.h"
#include "looking/pictures/page_looks.h"
#include "plates/survey/survey.h"

namespace riders::looking {

// What the survey says of a page, and of each of its plates but the ink's colour and the screen.
PageFacts startedFacts(const plates::Survey &survey, std::size_t index, const PageLook &look, double dpi);

// The loupe picture of a plate, in the file that its facts name; throws Refusal, as the others do.
void drawPlate(const PageFacts &page, std::size_t plate, const PageDots &dots,
               const std::filesystem::path &folder);
// That of all plates with a picture; names it in the facts.
void drawAllInks(PageFacts &page, const PageDots &dots, const std::filesystem::path &folder);

}  // namespace riders::looking
