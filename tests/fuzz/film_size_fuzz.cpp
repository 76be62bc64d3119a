// Any text as the size of a film: refused, or a film within its limits.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "film/sheet_size.h"
#include "io/refusal.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, size_t size)
{
    try {
        const riders::film::SheetSize film =
            riders::film::sheetSizeFrom({reinterpret_cast<const char *>(data), size});
        if (!(film.width >= 1 && film.width <= 400 && film.height >= 1 && film.height <= 400))
            std::abort();
    } catch (const riders::io::Refusal &) {  // NOLINT(bugprone-empty-catch): most of what comes is no size
    }
    return 0;
}
