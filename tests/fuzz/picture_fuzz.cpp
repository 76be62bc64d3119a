// Any bytes as a 'PICT': read or refused, and every image has as many pixels as
// its size says.
#include <cstdint>
#include <cstdlib>

#include "quickdraw/picture_format.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t count)
{
    auto contents = toolbox::quickdraw::readPicture({reinterpret_cast<const char *>(data), count});
    if (!contents)
        return 0;
    for (const auto &step : contents->steps)
        if (step.image.pixels.size() != size_t(step.image.width) * size_t(step.image.height))
            abort();
    return 0;
}
