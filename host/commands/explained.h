// What `riders make --explain` prints besides.
#pragma once

#include <string>
#include <vector>

#include "explain/explain.h"
#include "screens/plate_screen.h"

namespace riders::commands {

// Those of the plates that were chosen, in their order and by their names; after them those that the interpreter
// has besides, where they are not as the rest.
std::vector<explain::ReachedScreen> inOrder(const std::vector<explain::ReachedScreen> &reached,
                                            const std::vector<screens::PlateScreen> &plates);
// A line each, below one that names the resolution; at the end one where something was left to the job.
std::string explainedInWords(const std::vector<explain::ReachedScreen> &reached,
                             const std::vector<screens::PlateScreen> &plates, int dpi);
// An object with the resolution and an array.
std::string explainedInJson(const std::vector<explain::ReachedScreen> &reached, int dpi);

}  // namespace riders::commands
