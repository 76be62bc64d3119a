// Any bytes as a riders file: what it asks for is found or not, and is a number; any line as an opening marker
// line: refused, or the one that would be written.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "apply/markers.h"
#include "fuzz/memory_file.h"
#include "plates/measuring/asked_for.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const riders::plates::AskedFor asked = riders::plates::askedByRiders(memoryFile(data, size));
    for (const auto &number : {asked.frequency, asked.angle})
        if (number && !std::isfinite(*number))
            abort();
    for (const auto &[name, plate] : asked.plates)
        if (name.empty() || name.size() > size / 2)
            abort();
    const std::string_view line(reinterpret_cast<const char *>(data), size);
    const auto marker = riders::apply::parseOpening(line);
    if (marker && riders::apply::openingLine(*marker) != line)
        abort();
    return 0;
}
