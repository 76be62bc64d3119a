// Pages with spot inks that the fast device can make.
#pragma once

#include <set>

#include "io/workers.h"
#include "plates/rendering/rendering.h"

namespace riders::plates {

struct SpotInks {
    std::set<size_t> apart;  // pages, by their index in the survey, whose inks can be rendered apart
    std::map<std::string, std::array<double, 4>> inks;  // see InterpreterReport; of the pages looked at
};

// Renders the pages with spot inks small and in both ways, and compares them bit for bit, since a job can bypass
// what separates its inks. Looks at none where it is not worth the time: at a low resolution (`dpi`), with many
// inks, or in a PDF, whose inks cannot be separated in this way.
SpotInks lookAtSpotInks(const RenderedJob &job, double dpi, const std::filesystem::path &work,
                        io::Workers &workers);

}  // namespace riders::plates
