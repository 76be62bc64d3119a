// Any bytes as a spot function file that a command names: taken with what follows the first carriage return, as by
// the plug-in, or refused with the file's name.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "io/refusal.h"
#include "screens/shapes.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string bytes(reinterpret_cast<const char *>(data), size);
    try {
        const riders::screens::Shape shape = riders::screens::shapeFrom("folder/file", bytes);
        const size_t end = bytes.find('\r');
        if (bytes.substr(0, 96).find("%!KT1_Spot") == bytes.npos || end >= 96 ||
            bytes.substr(end + 1) != shape.body || shape.name != "file" ||
            shape.body.find("%end-of-dot-shape%") != shape.body.npos)
            abort();
        if (riders::screens::aboutShape(shape).find_first_of("\r\n") != std::string::npos)
            abort();
    } catch (const riders::io::Refusal &refusal) {
        if (!refusal.message.starts_with("folder/file is no spot function file: "))
            abort();
    }
    return 0;
}
