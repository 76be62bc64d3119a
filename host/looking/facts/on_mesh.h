// What is to be said of a page whose plates are to be printed through a mesh.
#pragma once

#include <string>
#include <vector>

#include "looking/facts/page_facts.h"

namespace riders::looking {

// Sentences, each for all plates of which the same is to be said; none if the page is for no mesh.
// How the plates whose screens were found suit the mesh, without what is warned of.
std::vector<std::string> factsOnMesh(const PageFacts &page);
// What is worth a warning.
std::vector<std::string> warningsOnMesh(const PageFacts &page);

}  // namespace riders::looking
