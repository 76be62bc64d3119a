// A job's inks taken apart ahead of the job, so that a device of four inks makes plates of others.
#pragma once

#include <string>

namespace riders::plates {

// PostScript that runs ahead of a job. It takes the place of the operators that set colours, as far as
// PostScript allows: a job can get past it, and what it paints then is wrong. See spot_inks.h.

// Spot inks are painted as white: what is left are the process plates.
std::string processInksOnly();
// The named spot ink, by the bytes of its name, is painted in black and everything else in white: the black
// plate is then that of the ink, with its screen.
std::string spotInkAsBlack(const std::string &ink);

}  // namespace riders::plates
