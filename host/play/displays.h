// Displays in words, and pictures of them.
#pragma once

#include <string>
#include <vector>

#include "toolbox/host/machine.h"

namespace riders::play {

enum { shortestSide = 64, longestSide = 8192, largestScale = 3 };

// WIDTHxHEIGHTxDEPTH or WIDTHxHEIGHTxDEPTH@SCALE, several joined by +, left to
// right; empty when the text is not of this form. Depths are 1, 2, 4, 8 and 32, sides 64
// to 8192 pixels, scales 1 to 3 device pixels per pixel; 1 when none is given.
std::vector<toolbox::Display> displaysFromText(const std::string &text);

bool isDepth(int bits);

// The part of a display's picture that shows the global rectangle.
toolbox::Picture pictureOf(const toolbox::Picture &whole, const toolbox::Display &display, const Rect &global);

}  // namespace riders::play
