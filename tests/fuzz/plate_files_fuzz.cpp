// Any bytes as the interpreter's TIFF files: read whole or refused.
#include <tiffio.h>

#include <cstdint>
#include <cstdlib>

#include "fuzz/memory_file.h"
#include "io/refusal.h"
#include "plates/files/plate_files.h"

namespace plates = riders::plates;

namespace {

template <class Read>
void unlessRefused(Read read)
{
    try {
        read();
    } catch (const riders::io::Refusal &) {
    }
}

size_t area(int width, int height)
{
    return static_cast<size_t>(width) * static_cast<size_t>(height);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    TIFFSetWarningHandler(nullptr);
    TIFFSetErrorHandler(nullptr);
    const std::string file = memoryFile(data, size);
    unlessRefused([&] {
        const plates::TintPlate plate = plates::readTints(file);
        if (plate.ink.size() != area(plate.width, plate.height))
            abort();
    });
    unlessRefused([&] {
        for (const plates::TintPlate &plate : plates::readComposite(file))
            if (plate.ink.size() != area(plate.width, plate.height))
                abort();
    });
    unlessRefused([&] {
        const plates::BitPlate plate = plates::readPlate(file);
        if (plate.bits.size() != plate.rowBytes * static_cast<size_t>(plate.height))
            abort();
    });
    return 0;
}
