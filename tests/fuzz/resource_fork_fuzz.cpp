// Any bytes as a resource fork: read or refused; and what was read, written
// and read again, is the same.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "toolbox/host/resource_fork.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *bytes, size_t count)
{
    using namespace toolbox::resources;
    std::vector<ForkEntry> entries, again;
    if (parseFork({reinterpret_cast<const char *>(bytes), count}, entries) != noErr)
        return 0;
    auto written = forkBytes(entries);
    if (!written)
        return 0;
    if (parseFork(*written, again) != noErr || again.size() != entries.size())
        abort();
    size_t before = 0, after = 0;
    for (size_t i = 0; i < entries.size(); ++i) {
        before += entries[i].data.size() + entries[i].name.value_or("").size();
        after += again[i].data.size() + again[i].name.value_or("").size();
    }
    if (before != after)
        abort();
    return 0;
}
