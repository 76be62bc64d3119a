// Whatever the bytes: a place is inside the job, and a marker put there is
// found there again.
#include <stdlib.h>

#include <cstdint>
#include <string>

#include "apply/job_structure.h"
#include "apply/markers.h"
#include "apply/refusal.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string job(reinterpret_cast<const char *>(data), size);
    try {
        const riders::Place place = riders::findPlace({job, true, "job"});
        if (place.offset > size)
            abort();
        const riders::Marker marker{3, place.needsLineEnd, true, riders::isLandscape({job, true, "job"})};
        std::string applied = job.substr(0, place.offset);
        applied += place.needsLineEnd ? "\n" : "";
        const size_t at = applied.size();
        applied += riders::openingLine(marker);
        applied += marker.landscape ? riders::kLandscapeLine : "";
        applied += "abc\n";
        applied += riders::kClosingLine;
        applied += job.substr(place.offset);
        if (riders::findFragment({applied, true, "job"}) != at)
            abort();
        if (riders::parseOpening(applied.substr(at, applied.find('\n', at) + 1 - at)) != marker)
            abort();
    } catch (const riders::Refusal &) {
    }
    return 0;
}
