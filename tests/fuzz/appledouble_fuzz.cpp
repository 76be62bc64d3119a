// Any bytes: refused, or read into something that is written and read again
// without loss.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "toolbox/host/appledouble.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    using namespace toolbox::files;
    auto file = parseAppleDouble({reinterpret_cast<const char *>(data), size});
    if (!file)
        return 0;
    for (int turn = 0; turn < 2; ++turn) {
        auto again = parseAppleDouble(composeAppleDouble(*file));
        if (!again || again->entries.size() != file->entries.size())
            abort();
        for (const AppleDouble::Entry &entry : file->entries)
            if (again->bytes(entry.id) != entry.bytes)
                abort();
        file->setFinderInfo("TEXTttxt");
        file->set(resourceForkEntry, "fork");
    }
    return 0;
}
