// Any line as what explain.ps prints: nothing, or a screen that can be said.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "explain/explain.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string line(reinterpret_cast<const char *>(data), size);
    const auto screen = riders::explain::screenFromLine(line, 1200);
    if (!screen)
        return 0;
    if (!(screen->frequency > 0) || !std::isfinite(screen->angle) || !(screen->cell > 0) || screen->levels < 1 ||
        screen->levels > 256 || screen->supercellCells < 0 || screen->supercellPixels < 0)
        abort();
    return 0;
}
