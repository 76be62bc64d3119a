// Any bytes as a PNG file for a resource: read or refused, with as many pixels as its size says.
#include <cstdint>
#include <cstdlib>

#include "pngpixels.h"
#include "source.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    try {
        const rescomp::Pixels pixels =
            rescomp::pixelsOf(std::string(reinterpret_cast<const char *>(data), size), rescomp::Place{});
        if (pixels.rows.size() != static_cast<size_t>(pixels.width) * static_cast<size_t>(pixels.height))
            abort();
    } catch (const rescomp::SourceError &) {
    }
    return 0;
}
