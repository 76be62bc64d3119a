// The resolutions of a queue, as its description has them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "screening/tile.h"

namespace riders::printing {

struct QueueResolution {
    std::string choice;  // the driver's name for it
    screening::Resolution dpi;
};

// What a choice's PostScript sets: the two numbers after /HWResolution, in brackets. Nothing where there are none,
// or none that a printer could have.
std::optional<screening::Resolution> resolutionFromCode(std::string_view code);
// What a choice is called: 720dpi, 1440x720dpi. Likewise.
std::optional<screening::Resolution> resolutionFromName(std::string_view name);

bool same(const screening::Resolution &one, const screening::Resolution &other);
// 720, or 1440x720.
std::string inWords(const screening::Resolution &dpi);
std::string inWords(const std::vector<QueueResolution> &resolutions);

// The finest that is not finer than films need and most printers can print in reasonable time, or else the
// coarsest.
const QueueResolution &sensible(const std::vector<QueueResolution> &resolutions);

}  // namespace riders::printing
