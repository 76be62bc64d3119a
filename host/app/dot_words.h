// What is said about the dots under the loupe.
#pragma once

#include <string>

#include "viewing/dots_picture.h"

namespace riders::app {

// UTF-8. The first thing a person wants to know: whether they are what was asked for, and if not, why.
std::string verdictOn(const viewing::Dots &dots, double dpi);
// What was asked for, by whom, and what was measured, each in a line of its own, with CR between them.
std::string factsAbout(const viewing::Dots &dots);

// With at most one decimal, and the session's decimal separator.
std::string numberText(double value);

}  // namespace riders::app
