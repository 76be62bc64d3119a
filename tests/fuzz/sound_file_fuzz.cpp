// Any bytes as a WAV file for a resource: read or refused.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "compiler.h"
#include "source.h"
#include "fuzz/memory_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string source = "sound 128 file \"" + memoryFile(data, size) + "\"\n";
    try {
        rescomp::compileText("/nowhere/source.res", source).fork({"source.res", 1});
    } catch (const rescomp::SourceError &) {
    }
    return 0;
}
