// Any bytes as the name of an ink: for people it is plain text, and files get names that are plain and differ.
#include <cctype>
#include <cstdint>
#include <cstdlib>

#include "io/plain_text.h"
#include "plates/files/plate_names.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string ink(reinterpret_cast<const char *>(data), size);
    const std::string shown = riders::plates::plateNameFrom(ink, size);
    if (riders::io::plainText(shown) != shown || riders::plates::inkBytesFrom(ink, size).size() > ink.size())
        abort();
    std::set<std::string> taken = {"all"};
    for (const std::string &name : {shown, ink, shown.substr(0, 1)}) {
        const size_t before = taken.size();
        const std::string file = riders::plates::fileNameFor(name, taken);
        if (taken.size() != before + 1 || file.empty() || file.size() > 50)
            abort();
        for (const char c : file)
            if (!(c == '-' || (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z')))
                abort();
    }
    return 0;
}
