// Which spot function a job uses, by the values that it gives over a cell.
#pragma once

#include <string>
#include <vector>

namespace riders::plates {

// As many as prolog.ps writes, a row at a time.
inline constexpr size_t kShapeValues = 49;

// The name of the spot function (see meter/spots.h) whose values are in the same order, which is all that
// counts for the dots; empty where none is.
std::string shapeOf(const std::vector<double> &values);

}  // namespace riders::plates
