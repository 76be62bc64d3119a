// What is to be said of a plate that is to be printed through a mesh.
#pragma once

#include <string>

#include "proof/facts/measured_screen.h"

namespace riders::proof {

// The screen must have been found. Words without a full stop.
std::string wordsOnMesh(const MeasuredScreen &measured, double threadsPerInch);
// Whether that is worth a warning.
bool isDoubtfulOnMesh(const MeasuredScreen &measured, double threadsPerInch);

}  // namespace riders::proof
