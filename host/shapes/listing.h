// The installed dot shapes, as `riders shapes` lists them.
#pragma once

#include <string>
#include <vector>

#include "screens/shapes.h"

namespace riders::shapes {

// What the shape is like; and the name of its file, if that is none of the names by which commands know it.
std::string aboutWithFile(const screens::Shape &shape, const std::vector<std::string> &names);

// A line for each: the names by which commands know it, and what it is like; then where the files are.
std::string listing(const std::vector<screens::Shape> &installed);
// The same for programs: an array of objects with "names", "about" and "file".
std::string listingInJson(const std::vector<screens::Shape> &installed);

}  // namespace riders::shapes
