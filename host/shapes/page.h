// The page that shows dot shapes.
#pragma once

#include <string>
#include <vector>

#include "screens/shapes.h"
#include "shapes/trial_words.h"

namespace riders::shapes {

struct ShownShape {
    screens::Shape shape;
    std::vector<std::string> names;  // by which commands know it; those of an installed shape
    ShapeTrial trial;                // without a problem
};

// HTML, with its pictures and style in it.
std::string pageOf(const std::vector<ShownShape> &shapes);

// What is in every such page, within its first 1024 bytes.
std::string pageMark();

}  // namespace riders::shapes
