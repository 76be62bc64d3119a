// Screens in words, and pictures of them.
#pragma once

#include <string>
#include <vector>

#include "toolbox/host/machine.h"

namespace riders::play {

enum { shortestSide = 64, longestSide = 8192, largestScale = 3 };

// WIDTHxHEIGHTxDEPTH or WIDTHxHEIGHTxDEPTH@SCALE, several joined by +, left to
// right; empty when it is none of these. Depths are 1, 2, 4, 8 and 32, sides 64
// to 8192 pixels, scales 1 to 3 device pixels to a pixel; 1 where none is given.
std::vector<toolbox::Screen> screensFromText(const std::string &text);

bool isDepth(int bits);

// The part of a screen's picture that shows the global rectangle.
toolbox::Picture pictureOf(const toolbox::Picture &whole, const toolbox::Screen &screen, const Rect &global);

}  // namespace riders::play
