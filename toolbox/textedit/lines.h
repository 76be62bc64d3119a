// Breaking text into lines and drawing them, for everything that shows text in
// a rectangle.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "toolbox/quickdraw.h"

namespace toolbox::textedit {

// Characters start to end of the text; the CR that ends a line is not in it,
// blanks that hang over the right edge are.
struct Line {
    int start;
    int end;
};

// At least one line, and one more after a CR at the end. Breaks at CR and, with
// wrap set, between words so that a line is no wider than width in the current
// port's text settings; a longer word is broken where it must be.
std::vector<Line> breakLines(std::string_view text, int width, bool wrap);

// For the current port's text settings.
int lineHeight();
int ascent();
int widthOf(std::string_view text);

// Where a line begins: left edge of the box for just 0, else centred (1) or
// against the right edge (-1).
int leftOf(std::string_view line, const Rect &box, int just);

// Draws from the box's top down, clipped to the box.
void drawLines(std::string_view text, const Rect &box, int just, bool wrap);

}  // namespace toolbox::textedit
