// Pages of CUPS raster as a queue's driver wants them.
#pragma once

#include <string>
#include <vector>

#include "film/printing/queue.h"
#include "screening/tile.h"

namespace riders::printing {

// How black and white are said to it.
struct ColourModel {
    std::string choice;  // of the driver's option; empty where it has none
    unsigned bits = 1;   // a pixel: 1 or 8
};

// The one with the fewest bits in which black is one ink. Throws Refusal where there is none.
ColourModel chooseColourModel(const Queue &queue);

// The header for a page of that sheet with those options. What the driver's description sets is as there, and the
// size in pixels follows from the sheet and the resolution.
cups_page_header2_t driverPage(const Queue &queue, const std::vector<JobOption> &options, const QueueSheet &sheet,
                               const screening::Resolution &dpi);

// Whether a pixel is black where its bits are set, or where they are not.
bool blackIsSet(const cups_page_header2_t &header);

}  // namespace riders::printing
