// `riders shapes`: dot shapes tried, and shown on a page.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "shapes/try_shapes.h"

namespace riders::shapes {

struct ShowRequest {
    std::string shape;           // a name or a spot function file; empty for all that are installed
    std::filesystem::path page;  // where the page goes; empty for a name of its own in the current folder
    TrialLimits limits;
};

struct Shown {
    std::string problem;             // why the shape is none; the page is then as it was
    std::vector<std::string> notes;  // on the one shape
    std::filesystem::path page;
};

// Makes the page, or replaces one. Throws Refusal where there is no such shape, a file is none, or something other
// than such a page has its name; and Interrupted.
Shown showShapes(const ShowRequest &request);

}  // namespace riders::shapes
