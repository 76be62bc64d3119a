// Any bytes as a resource source: compiled or refused with a message. The
// source is not in a file, so that what it includes is not there.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "compiler.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *bytes, size_t count)
{
    try {
        std::string text(reinterpret_cast<const char *>(bytes), count);
        rescomp::compileText("/nowhere/source.res", text).fork({"source.res", 1});
    } catch (const rescomp::SourceError &error) {
        if (std::string(error.what()).find(": ") == std::string::npos)
            abort();
    }
    return 0;
}
