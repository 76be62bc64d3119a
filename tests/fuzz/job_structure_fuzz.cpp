// Whatever the bytes: a place is inside the job, and a marker put there is
// found there again.
#include <stdlib.h>

#include <cstdint>
#include <string>

#include "apply/job_structure.h"
#include "apply/markers.h"
#include "io/refusal.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string job(reinterpret_cast<const char *>(data), size);
    try {
        const riders::apply::Place place = riders::apply::findPlace({job, true, "job"});
        if (place.offset > size)
            abort();
        const riders::apply::Marker marker{3, place.needsLineEnd, true, riders::apply::isLandscape({job, true, "job"})};
        std::string applied = job.substr(0, place.offset);
        applied += place.needsLineEnd ? "\n" : "";
        const size_t at = applied.size();
        applied += riders::apply::openingLine(marker);
        applied += marker.landscape ? riders::apply::kLandscapeLine : "";
        applied += "abc\n";
        applied += riders::apply::kClosingLine;
        applied += job.substr(place.offset);
        if (riders::apply::findFragment({applied, true, "job"}) != at)
            abort();
        if (riders::apply::parseOpening(applied.substr(at, applied.find('\n', at) + 1 - at)) != marker)
            abort();
    } catch (const riders::io::Refusal &) {
    }
    return 0;
}
