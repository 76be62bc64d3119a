// The dots of a small part of a page, as a device makes them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "plates/files/plate.h"
#include "plates/measuring/asked_for.h"
#include "plates/measuring/measured_screen.h"
#include "toolbox/host/machine.h"
#include "viewing/viewed_job.h"

namespace riders::viewing {

struct DotsWanted {
    ViewedJob job;
    std::filesystem::path asking = {};  // the riders file in it; empty: none
    double pageHeight = 0;              // inches
    double left = 0, top = 0;           // of the part's upper left corner, inches from the page's
    int columns = 0, rows = 0;          // device pixels
    double dpi = 600;
};

struct Dots {
    toolbox::Picture picture;         // columns by rows; all process inks on top of each other
    std::string plate;                // that was measured: the one with most ink in the part; empty for none
    plates::AskedFor asked;           // of that plate; of the first one where none has ink
    plates::MeasuredScreen measured;  // there or close to it; its ink is that in the part
    int enoughDpi = 0;                // at which the frequency asked for is reached, where it is not; 0: not known
};

// Has Ghostscript render only that part and half an inch around it, which takes the same time whatever the page's
// size. Spot inks come as the process inks that stand for them; an annotation is left out, whose place is the
// sheet's foot. Throws Refusal, and what ends the interpreter through `unwanted`.
Dots drawDots(const DotsWanted &wanted, io::Beside &unwanted);

}  // namespace riders::viewing
