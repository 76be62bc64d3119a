// Separating a job's inks by PostScript, so that a device of four inks makes plates of others.
#pragma once

#include <string>

namespace riders::plates {

// PostScript to run before a job. It replaces the operators that set colours, as far as PostScript allows: a
// job can bypass it, and what it paints then is wrong. See spot_inks.h.

// Spot inks are painted as white: what is left is the process plates.
std::string processInksOnly();
// The named spot ink, by the bytes of its name, is painted in black and everything else in white: the black
// plate is then that of the ink, with its screen.
std::string spotInkAsBlack(const std::string &ink);

}  // namespace riders::plates
