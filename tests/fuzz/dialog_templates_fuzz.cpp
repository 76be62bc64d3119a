// Any bytes as a dialog, an alert or an item list: read or refused, and no more
// items than the bytes can hold.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "dialogs/templates.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t count)
{
    using namespace toolbox::dialogs;
    constexpr size_t leastItemBytes = 14;
    std::string bytes(reinterpret_cast<const char *>(data), count);
    parseAlert(bytes);
    parseDialog(bytes);
    auto items = parseItems(bytes);
    if (items && items->size() > bytes.size() / leastItemBytes)
        abort();
    return 0;
}
